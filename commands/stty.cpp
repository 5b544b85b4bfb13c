// stty: shows and changes the settings of a terminal.
// Scripts rely on: nothing is changed unless all settings are understood; what -g prints is a setting; "size" and
// "speed" tell of the state after all changes, wherever they stand. A setting may begin with "-", so that options
// are only what stands before the settings and is made of the option letters, a single letter, or begins with "--".

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include <fcntl.h>
#include <termios.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "common/terminal.h"
#include "lib/option/option.h"
#include "platform/platform.h"

namespace {

constexpr const char* usage[] = {
    "Usage: stty [-F DEVICE] [-a | -g | SETTING...]\n",
    "Show or change terminal settings; without a SETTING, what differs from \"sane\".\n",
    "\n",
    "    -a    show all settings\n",
    "    -g    show all settings in a form that is a SETTING\n",
    "    -F    use DEVICE instead of standard input\n",
    "\n",
    "SETTING is one of\n",
    "    FLAG, -FLAG             set or clear what -a shows\n",
    "    CHARACTER VALUE         VALUE is a character, ^X, a number, or ^- or undef for none\n",
    "    SPEED, ispeed SPEED, ospeed SPEED\n",
    "    rows N, cols N, line N, min N, time N\n",
    "    size, speed             print rows and columns, or the speed\n",
    "    sane, raw, cooked, cbreak, evenp, parity, oddp, nl, ek, crt, dec, lcase,\n",
    "    litout, pass8, decctlq, tabs (with \"-\" the opposite, where there is one)\n",
};

// ---- what there is to set

enum Field : uint8_t { control, input, output, local, character, number };

enum Flags : uint8_t {
    bit = 1,     // a "-" in front clears it; otherwise it is one of several values
    sane = 2,    // "sane" sets it
    insane = 4,  // "sane" clears it, or sets another value
    hidden = 8,  // a second name
};

struct Setting {
    char name[10];
    Field field;
    uint8_t flags;
    uint32_t mask;   // the bits; for characters and numbers the index
    uint32_t value;  // what the bits are to be; for characters and numbers the sane one
};

constexpr unsigned disabled = _POSIX_VDISABLE;

// In the order of "-a". The bits beyond POSIX are those of termios(3) on Linux.
constexpr Setting settings[] = {
    {"intr", character, sane, VINTR, 'C' & 31},
    {"quit", character, sane, VQUIT, '\\' & 31},
    {"erase", character, sane, VERASE, 127},
    {"kill", character, sane, VKILL, 'U' & 31},
    {"eof", character, sane, VEOF, 'D' & 31},
    {"eol", character, sane, VEOL, disabled},
    {"eol2", character, sane, VEOL2, disabled},
    {"swtch", character, sane, VSWTC, disabled},
    {"start", character, sane, VSTART, 'Q' & 31},
    {"stop", character, sane, VSTOP, 'S' & 31},
    {"susp", character, sane, VSUSP, 'Z' & 31},
    {"rprnt", character, sane, VREPRINT, 'R' & 31},
    {"werase", character, sane, VWERASE, 'W' & 31},
    {"lnext", character, sane, VLNEXT, 'V' & 31},
    {"discard", character, sane, VDISCARD, 'O' & 31},
    {"flush", character, hidden, VDISCARD, 0},
    {"min", number, sane, VMIN, 1},
    {"time", number, sane, VTIME, 0},

    {"parenb", control, bit, PARENB, PARENB},
    {"parodd", control, bit, PARODD, PARODD},
    {"cmspar", control, bit, CMSPAR, CMSPAR},
    {"cs5", control, 0, CSIZE, CS5},
    {"cs6", control, 0, CSIZE, CS6},
    {"cs7", control, 0, CSIZE, CS7},
    {"cs8", control, 0, CSIZE, CS8},
    {"hupcl", control, bit, HUPCL, HUPCL},
    {"hup", control, bit | hidden, HUPCL, HUPCL},
    {"cstopb", control, bit, CSTOPB, CSTOPB},
    {"cread", control, bit | sane, CREAD, CREAD},
    {"clocal", control, bit, CLOCAL, CLOCAL},
    {"crtscts", control, bit, CRTSCTS, CRTSCTS},

    {"ignbrk", input, bit | insane, IGNBRK, IGNBRK},
    {"brkint", input, bit | sane, BRKINT, BRKINT},
    {"ignpar", input, bit, IGNPAR, IGNPAR},
    {"parmrk", input, bit, PARMRK, PARMRK},
    {"inpck", input, bit, INPCK, INPCK},
    {"istrip", input, bit, ISTRIP, ISTRIP},
    {"inlcr", input, bit | insane, INLCR, INLCR},
    {"igncr", input, bit | insane, IGNCR, IGNCR},
    {"icrnl", input, bit | sane, ICRNL, ICRNL},
    {"ixon", input, bit | sane, IXON, IXON},
    {"ixoff", input, bit | insane, IXOFF, IXOFF},
    {"tandem", input, bit | hidden, IXOFF, IXOFF},
    {"iuclc", input, bit | insane, IUCLC, IUCLC},
    {"ixany", input, bit | insane, IXANY, IXANY},
    {"imaxbel", input, bit | sane, IMAXBEL, IMAXBEL},
    {"iutf8", input, bit, IUTF8, IUTF8},  // as the terminal is, which "sane" cannot know

    {"opost", output, bit | sane, OPOST, OPOST},
    {"olcuc", output, bit | insane, OLCUC, OLCUC},
    {"ocrnl", output, bit | insane, OCRNL, OCRNL},
    {"onlcr", output, bit | sane, ONLCR, ONLCR},
    {"onocr", output, bit | insane, ONOCR, ONOCR},
    {"onlret", output, bit | insane, ONLRET, ONLRET},
    {"ofill", output, bit | insane, OFILL, OFILL},
    {"ofdel", output, bit | insane, OFDEL, OFDEL},
    {"nl0", output, sane, NLDLY, NL0},
    {"nl1", output, insane, NLDLY, NL1},
    {"cr0", output, sane, CRDLY, CR0},
    {"cr1", output, insane, CRDLY, CR1},
    {"cr2", output, insane, CRDLY, CR2},
    {"cr3", output, insane, CRDLY, CR3},
    {"tab0", output, sane, TABDLY, TAB0},
    {"tab1", output, insane, TABDLY, TAB1},
    {"tab2", output, insane, TABDLY, TAB2},
    {"tab3", output, insane, TABDLY, TAB3},
    {"bs0", output, sane, BSDLY, BS0},
    {"bs1", output, insane, BSDLY, BS1},
    {"vt0", output, sane, VTDLY, VT0},
    {"vt1", output, insane, VTDLY, VT1},
    {"ff0", output, sane, FFDLY, FF0},
    {"ff1", output, insane, FFDLY, FF1},

    {"isig", local, bit | sane, ISIG, ISIG},
    {"icanon", local, bit | sane, ICANON, ICANON},
    {"iexten", local, bit | sane, IEXTEN, IEXTEN},
    {"echo", local, bit | sane, ECHO, ECHO},
    {"echoe", local, bit | sane, ECHOE, ECHOE},
    {"crterase", local, bit | hidden, ECHOE, ECHOE},
    {"echok", local, bit | sane, ECHOK, ECHOK},
    {"echonl", local, bit | insane, ECHONL, ECHONL},
    {"noflsh", local, bit | insane, NOFLSH, NOFLSH},
    {"xcase", local, bit | insane, XCASE, XCASE},
    {"tostop", local, bit | insane, TOSTOP, TOSTOP},
    {"echoprt", local, bit | insane, ECHOPRT, ECHOPRT},
    {"prterase", local, bit | hidden, ECHOPRT, ECHOPRT},
    {"echoctl", local, bit | sane, ECHOCTL, ECHOCTL},
    {"ctlecho", local, bit | hidden, ECHOCTL, ECHOCTL},
    {"echoke", local, bit | sane, ECHOKE, ECHOKE},
    {"crtkill", local, bit | hidden, ECHOKE, ECHOKE},
    {"flusho", local, bit | insane, FLUSHO, FLUSHO},
    {"extproc", local, bit | insane, EXTPROC, EXTPROC},
};

// Names for several settings at once: a name, what it stands for, and so on. "cooked" leaves istrip alone, which
// would cut letters beyond ASCII to pieces.
constexpr char combinations[] =
    "raw\0"
    "-ignbrk -brkint -ignpar -parmrk -inpck -istrip -inlcr -igncr -icrnl -ixon -ixoff -icanon -opost -isig"
    " -iuclc -ixany -imaxbel -xcase min 1 time 0\0"
    "-raw\0cooked\0"
    "cooked\0brkint ignpar icrnl ixon opost isig icanon eof ^D eol ^-\0"
    "-cooked\0raw\0"
    "cbreak\0-icanon\0"
    "-cbreak\0icanon\0"
    "evenp\0parenb -parodd cs7\0"
    "parity\0evenp\0"
    "oddp\0parenb parodd cs7\0"
    "-evenp\0-parenb cs8\0"
    "-parity\0-evenp\0"
    "-oddp\0-evenp\0"
    "nl\0-icrnl -onlcr\0"
    "-nl\0icrnl -inlcr -igncr onlcr -ocrnl -onlret\0"
    "ek\0erase ^? kill ^U\0"
    "crt\0echoe echoctl echoke\0"
    "dec\0crt -ixany intr ^C erase ^? kill ^U\0"
    "lcase\0xcase iuclc olcuc\0"
    "-lcase\0-xcase -iuclc -olcuc\0"
    "LCASE\0lcase\0"
    "-LCASE\0-lcase\0"
    "litout\0-parenb -istrip -opost cs8\0"
    "-litout\0parenb istrip opost cs7\0"
    "pass8\0-parenb -istrip cs8\0"
    "-pass8\0parenb istrip cs7\0"
    "decctlq\0-ixany\0"
    "-decctlq\0ixany\0"
    "tabs\0tab0\0"
    "-tabs\0tab3\0";
constexpr size_t longest_meaning = 192;

struct Speed {
    speed_t code;
    uint32_t baud;
};

constexpr Speed speeds[] = {
    {B0, 0},
    {B50, 50},
    {B75, 75},
    {B110, 110},
    {B134, 134},
    {B150, 150},
    {B200, 200},
    {B300, 300},
    {B600, 600},
    {B1200, 1200},
    {B1800, 1800},
    {B2400, 2400},
    {B4800, 4800},
    {B9600, 9600},
    {B19200, 19200},
    {B38400, 38400},
    {B57600, 57600},
    {B115200, 115200},
    {B230400, 230400},
    {B460800, 460800},
    {B500000, 500000},
    {B576000, 576000},
    {B921600, 921600},
    {B1000000, 1000000},
    {B1152000, 1152000},
    {B1500000, 1500000},
    {B2000000, 2000000},
    {B2500000, 2500000},
    {B3000000, 3000000},
    {B3500000, 3500000},
    {B4000000, 4000000},
};

// ---- the state of a terminal

struct Terminal {
    termios modes;
    unsigned columns;
    unsigned rows;

    [[nodiscard]] tcflag_t& flags(Field field) {
        tcflag_t* const fields[] = {&modes.c_cflag, &modes.c_iflag, &modes.c_oflag, &modes.c_lflag};
        return *fields[field];
    }
    [[nodiscard]] bool is_set(const Setting& setting) {
        return (flags(setting.field) & setting.mask) == setting.value;
    }
    void set(const Setting& setting, bool on) {
        tcflag_t& field = flags(setting.field);
        field = (field & ~setting.mask) | (on ? setting.value : 0);
    }
};

// False with errno.
bool read_state(int fd, Terminal* terminal) {
    *terminal = {};
    if (tcgetattr(fd, &terminal->modes) != 0) return false;
    // Not every terminal knows of a window.
    (void)platform::terminal_size(fd, &terminal->columns, &terminal->rows);
    return true;
}

// The C libraries know one speed for both directions. The one of the input stands in bits of its own, which
// are 0 when it is that of the output.
constexpr int input_speed_shift = 16;

speed_t output_code(const termios& modes) {
    return cfgetospeed(&modes);
}

speed_t input_code(const termios& modes) {
    const tcflag_t own = modes.c_cflag & CIBAUD;
    return own != 0 ? own >> input_speed_shift : output_code(modes);
}

void set_codes(termios* modes, speed_t in, speed_t out) {
    (void)cfsetospeed(modes, out);
    modes->c_cflag &= ~tcflag_t{CIBAUD};
    if (in != out) modes->c_cflag |= in << input_speed_shift;
}

uint32_t baud(speed_t code) {
    for (const Speed& speed : speeds) {
        if (speed.code == code) return speed.baud;
    }
    return 0;
}

// ---- showing

// Puts items into lines no longer than the window is wide.
class Lines {
  public:
    Lines() { garnel_getwinsize(&width_, nullptr); }
    ~Lines() { end(); }
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;

    [[gnu::format(printf, 2, 3)]] void add(const char* format, ...) {
        char text[48];
        va_list arguments;
        va_start(arguments, format);
        const auto length = static_cast<unsigned>(vsnprintf(text, sizeof text, format, arguments));
        va_end(arguments);
        if (column_ > 0 && column_ + 1 + length > width_) end();
        printf("%s%s", column_ > 0 ? " " : "", text);
        column_ += length + (column_ > 0 ? 1 : 0);
    }
    void end() {
        if (column_ > 0) putchar('\n');
        column_ = 0;
    }

  private:
    unsigned width_ = 0;
    unsigned column_ = 0;
};

void add_character(Lines* lines, const Setting& setting, cc_t value) {
    if (setting.field == number) {
        lines->add("%s = %d;", setting.name, value);
    } else if (value == disabled) {
        lines->add("%s = <undef>;", setting.name);
    } else if (value >= 128) {
        lines->add("%s = 0x%x;", setting.name, value);
    } else {
        const bool shown_as_control = value < 32 || value == 127;
        lines->add("%s = %s%c;", setting.name, shown_as_control ? "^" : "",
                   shown_as_control ? value ^ 64 : value);
    }
}

void add_setting(Lines* lines, Terminal* terminal, const Setting& setting, bool all) {
    if (setting.field >= character) {
        const cc_t value = terminal->modes.c_cc[setting.mask];
        if (all || value != setting.value) add_character(lines, setting, value);
        return;
    }
    const bool on = terminal->is_set(setting);
    const bool differs = (setting.flags & (on ? insane : sane)) != 0;
    if (!all && !differs) return;
    if (on || (setting.flags & bit) != 0) lines->add("%s%s", on ? "" : "-", setting.name);
}

void show(Terminal* terminal, bool all) {
    Lines lines;
    const uint32_t in = baud(input_code(terminal->modes));
    const uint32_t out = baud(output_code(terminal->modes));
    if (in != out) lines.add("ispeed %u baud;", in);
    lines.add("%sspeed %u baud;", in != out ? "o" : "", out);
    if (all) {
        lines.add("rows %u;", terminal->rows);
        lines.add("columns %u;", terminal->columns);
    }
    lines.add("line = %u;", terminal->modes.c_line);
    lines.end();
    Field group = character;
    for (const Setting& setting : settings) {
        if ((setting.flags & hidden) != 0) continue;
        // Characters and numbers are one group.
        if (setting.field != group && setting.field != number) {
            lines.end();
            group = setting.field;
        }
        add_setting(&lines, terminal, setting, all);
    }
}

void print_saved(const termios& modes) {
    printf("%x:%x:%x:%x", modes.c_iflag, modes.c_oflag, modes.c_cflag, modes.c_lflag);
    for (cc_t value : modes.c_cc) printf(":%x", value);
    putchar('\n');
}

// ---- changing

bool parse_number(const char* text, unsigned most, unsigned* value) {
    char* end;
    const unsigned long parsed = strtoul(text, &end, 0);
    if (*text < '0' || *text > '9' || *end != '\0' || parsed > most) return false;
    *value = static_cast<unsigned>(parsed);
    return true;
}

bool parse_character(const char* text, unsigned* value) {
    if (strcmp(text, "undef") == 0 || strcmp(text, "^-") == 0) {
        *value = disabled;
        return true;
    }
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    if (bytes[0] != '\0' && bytes[1] == '\0') {
        *value = bytes[0];
        return true;
    }
    if (bytes[0] == '^' && bytes[2] == '\0') {
        *value = bytes[1] == '?' ? 127 : bytes[1] & 31U;
        return true;
    }
    return parse_number(text, 255, value);
}

// What print_saved printed.
bool restore(termios* modes, const char* text) {
    termios saved = *modes;
    tcflag_t* const fields[] = {&saved.c_iflag, &saved.c_oflag, &saved.c_cflag, &saved.c_lflag};
    const size_t count = std::size(fields) + std::size(saved.c_cc);
    for (size_t i = 0; i < count; i++) {
        if (strspn(text, "0123456789abcdefABCDEF") == 0) return false;
        char* end;
        const unsigned long value = strtoul(text, &end, 16);
        if (*end != (i + 1 < count ? ':' : '\0') || value > (i < std::size(fields) ? UINT32_MAX : 255))
            return false;
        if (i < std::size(fields)) {
            *fields[i] = static_cast<tcflag_t>(value);
        } else {
            saved.c_cc[i - std::size(fields)] = static_cast<cc_t>(value);
        }
        text = end + 1;
    }
    *modes = saved;
    return true;
}

void make_sane(Terminal* terminal) {
    for (const Setting& setting : settings) {
        const bool good = (setting.flags & sane) != 0;
        if (setting.field >= character) {
            if (good) terminal->modes.c_cc[setting.mask] = static_cast<cc_t>(setting.value);
        } else if (good || (setting.flags & (insane | bit)) == (insane | bit)) {
            terminal->set(setting, good);
        }
    }
}

bool set_speed(termios* modes, const char* text, bool in, bool out) {
    unsigned wanted;
    if (!parse_number(text, UINT32_MAX, &wanted)) return false;
    for (const Speed& speed : speeds) {
        if (speed.baud != wanted) continue;
        set_codes(modes, in ? speed.code : input_code(*modes), out ? speed.code : output_code(*modes));
        return true;
    }
    return false;
}

const Setting* find(const char* name) {
    for (const Setting& setting : settings) {
        if (strcmp(setting.name, name) == 0) return &setting;
    }
    return nullptr;
}

const char* find_combination(const char* name) {
    for (const char* at = combinations; *at != '\0';) {
        const char* meaning = at + strlen(at) + 1;
        if (strcmp(at, name) == 0) return meaning;
        at = meaning + strlen(meaning) + 1;
    }
    return nullptr;
}

// What takes a value of its own behind it, beside characters.
bool set_value(Terminal* terminal, const char* name, const char* text, bool* known) {
    *known = true;
    unsigned value = 0;
    const Setting* setting = find(name);
    if (setting != nullptr && setting->field >= character) {
        const bool good =
            setting->field == number ? parse_number(text, 255, &value) : parse_character(text, &value);
        if (good) terminal->modes.c_cc[setting->mask] = static_cast<cc_t>(value);
        return good;
    }
    if (strcmp(name, "rows") == 0) return parse_number(text, UINT16_MAX, &terminal->rows);
    if (strcmp(name, "cols") == 0 || strcmp(name, "columns") == 0)
        return parse_number(text, UINT16_MAX, &terminal->columns);
    if (strcmp(name, "ispeed") == 0) return set_speed(&terminal->modes, text, true, false);
    if (strcmp(name, "ospeed") == 0) return set_speed(&terminal->modes, text, false, true);
    if (strcmp(name, "line") == 0) {
        if (!parse_number(text, 255, &value)) return false;
        terminal->modes.c_line = static_cast<cc_t>(value);
        return true;
    }
    *known = false;
    return false;
}

enum class Asking { ignored, answered };

bool apply(Terminal* terminal, std::span<const char* const> words, Asking asking);

bool apply_combination(Terminal* terminal, const char* meaning) {
    char text[longest_meaning];
    const char* words[32];
    size_t count = 0;
    char* rest = nullptr;
    snprintf(text, sizeof text, "%s", meaning);
    for (char* word = strtok_r(text, " ", &rest); word != nullptr; word = strtok_r(nullptr, " ", &rest))
        words[count++] = word;
    return apply(terminal, {words, count}, Asking::ignored);
}

// A word that stands alone. False when it is not known.
bool apply_word(Terminal* terminal, const char* word, Asking asking) {
    const bool clear = word[0] == '-';
    const Setting* setting = find(clear ? word + 1 : word);
    if (setting != nullptr && setting->field < character && (!clear || (setting->flags & bit) != 0)) {
        terminal->set(*setting, !clear);
        return true;
    }
    if (const char* meaning = find_combination(word)) return apply_combination(terminal, meaning);
    if (strcmp(word, "sane") == 0) {
        make_sane(terminal);
    } else if (strcmp(word, "size") == 0) {
        if (asking == Asking::answered) printf("%u %u\n", terminal->rows, terminal->columns);
    } else if (strcmp(word, "speed") == 0) {
        if (asking == Asking::ignored) return true;
        const uint32_t in = baud(input_code(terminal->modes));
        const uint32_t out = baud(output_code(terminal->modes));
        if (in != out) printf("%u ", in);
        printf("%u\n", out);
    } else {
        return restore(&terminal->modes, word) || set_speed(&terminal->modes, word, true, true);
    }
    return true;
}

// False after a message.
bool apply(Terminal* terminal, std::span<const char* const> words, Asking asking) {
    for (size_t i = 0; i < words.size(); i++) {
        const char* word = words[i];
        const char* value = i + 1 < words.size() ? words[i + 1] : nullptr;
        bool takes_value;
        const bool good = set_value(terminal, word, value != nullptr ? value : "", &takes_value);
        if (takes_value && value == nullptr) {
            cli::error("stty: %s: missing argument\n", word);
            return false;
        }
        if (takes_value) i++;
        if (!(takes_value ? good : apply_word(terminal, word, asking))) {
            cli::error("stty: %s: invalid argument\n", words[i]);
            return false;
        }
    }
    return true;
}

// What the kernel keeps; the rest of a termios is the C library's own.
bool same_modes(const termios& a, const termios& b) {
    bool same = a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_cflag == b.c_cflag &&
                a.c_lflag == b.c_lflag && a.c_line == b.c_line;
    for (const Setting& setting : settings) {
        if (setting.field >= character) same &= a.c_cc[setting.mask] == b.c_cc[setting.mask];
    }
    return same;
}

int refused(const char* name) {
    return cli::fail("stty: %s: %s\n", name, gn_strerror(errno));
}

int change(int fd, const char* name, Terminal* terminal, std::span<const char* const> words) {
    const Terminal before = *terminal;
    if (!apply(terminal, words, Asking::ignored)) return 1;
    if (terminal->rows != before.rows || terminal->columns != before.columns) {
        if (!platform::set_terminal_size(fd, terminal->columns, terminal->rows)) return refused(name);
    }
    int status = 0;
    if (!same_modes(before.modes, terminal->modes)) {
        while (tcsetattr(fd, TCSADRAIN, &terminal->modes) != 0) {
            if (errno != EINTR) return refused(name);
        }
        const termios wanted = terminal->modes;
        if (!read_state(fd, terminal)) return refused(name);
        // A terminal takes what it can, and calls that a success.
        if (!same_modes(wanted, terminal->modes))
            status = cli::fail("stty: %s: not all settings were accepted\n", name);
    }
    Terminal scratch = *terminal;
    for (const char* word : words) {
        if (strcmp(word, "size") == 0 || strcmp(word, "speed") == 0)
            (void)apply_word(&scratch, word, Asking::answered);
    }
    return output::finish("stty", status);
}

// How many of the arguments are options, with their operands.
int count_options(int argc, char** argv) {
    int count = 0;
    while (count < argc && argv[count][0] == '-' && argv[count][1] != '\0') {
        const char* letters = argv[count] + 1;
        if (letters[0] != '-' && letters[1] != '\0' && letters[strspn(letters, "agF")] != '\0') break;
        count += strchr(letters, 'F') != nullptr ? 2 : 1;
    }
    return count < argc ? count : argc;
}

}  // namespace

int gn_stty(int argc, char** argv) {
    char mode = '\0';
    const char* device = nullptr;
    const int options = count_options(argc, argv);
    const std::span<const char* const> words(argv + options, static_cast<size_t>(argc - options));
    argc = options;
    e_option state;
    e_initoption(&state, &argc, &argv, false);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        switch (c) {
        case 'a':
        case 'g':
            if (mode != '\0' && mode != c) return cli::fail("stty: -%c: not together with -%c\n", c, mode);
            mode = static_cast<char>(c);
            break;
        case 'F':
            device = e_opt_getstr(&state);
            if (device == nullptr) return cli::fail("stty: -F: missing argument\n");
            break;
        case e_help: return cli::help(usage);
        default: return cli::unknown_switch(stderr, "stty: unknown switch: -%c\n", c);
        }
    }
    if (mode != '\0' && !words.empty()) return cli::fail("stty: %s: not together with -%c\n", words[0], mode);

    UniqueFd opened;
    int fd = STDIN_FILENO;
    const char* name = device != nullptr ? device : "standard input";
    if (device != nullptr) {
        // A line without a carrier would keep the opening waiting, but what follows is to wait as usual.
        opened = UniqueFd(open(device, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        fd = opened.get();
        const int flags = opened.valid() ? fcntl(fd, F_GETFL) : -1;
        if (flags < 0 || fcntl(fd, F_SETFL, flags & ~O_NONBLOCK) != 0) return refused(name);
    }
    Terminal terminal;
    if (!read_state(fd, &terminal)) return refused(name);
    if (!words.empty()) return change(fd, name, &terminal, words);
    if (mode == 'g') {
        print_saved(terminal.modes);
    } else {
        show(&terminal, mode == 'a');
    }
    return output::finish("stty", 0);
}
