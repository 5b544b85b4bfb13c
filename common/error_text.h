// The wording of error numbers.

#pragma once

// The text of an error number in the wording that users of Linux know, the same in every build whatever the C
// library says ("Input/output error", not "I/O error"). "Unknown error N" for a number without a text, in a
// static buffer that the next such call overwrites.
[[nodiscard]] const char* gn_strerror(int error);

// The text for an operand that is neither a regular file nor a character device. The system that the toolbox
// was designed for has an error number for it; this one has not.
[[nodiscard]] const char* gn_strerror_ENOTFILE();

// The text for a short read or write.
[[nodiscard]] const char* gn_strerror_EIO();
