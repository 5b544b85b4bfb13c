// nslookup: prints the addresses and aliases of a host.
// Scripts rely on: without an operand it shows the usage with status 0; an unknown switch is reported on
// standard output; addresses are IPv4.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <strings.h>
#include <sys/socket.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "common/own.h"
#include "lib/containers/container_vector.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: nslookup SERVER\n",
    "Query Internet name servers.\n",
};

constexpr const char* blanks = " \t\n\v\f\r";

// musl leaves the hosts file's aliases out, and finds no name there in other letters or at the file's very end.
#ifdef __GLIBC__
constexpr bool library_is_musl = false;
#else
constexpr bool library_is_musl = true;
#endif

// Aliases in their order, as the lines that are printed.
class Aliases {
  public:
    // False when there is no memory.
    [[nodiscard]] bool add(std::string_view name) {
        count_++;
        return lines_.push_back('\t') && lines_.append({name.data(), name.size()}) && lines_.push_back('\n');
    }

    void print() const {
        printf("The host has %i alias%s.\n", count_, count_ == 1 ? "" : "es");
        if (count_ > 0) output::write({lines_.data(), lines_.size()});
    }

  private:
    int count_ = 0;
    Vector<char> lines_;
};

// What is known of a host; without a name, nothing is.
struct Host {
    CString name;
    int family = AF_INET;
    Vector<in_addr> addresses;
    Aliases aliases;
};

// The next word of a text, which loses it; empty at the end.
std::string_view take_word(const char** text) {
    *text += strspn(*text, blanks);
    std::string_view word(*text, strcspn(*text, blanks));
    *text += word.size();
    return word;
}

// In upper or lower case.
bool holds_word(const char* text, std::string_view wanted) {
    for (;;) {
        std::string_view word = take_word(&text);
        if (word.empty()) return false;
        if (word.size() == wanted.size() && strncasecmp(word.data(), wanted.data(), word.size()) == 0)
            return true;
    }
}

// Adds what a line of the hosts file says of the host that was asked for:
//     ADDRESS NAME [ALIAS]... [# COMMENT]
// The line's own name comes last, unless it is the official one, that of the first line. False when there is no
// memory.
bool add_from_line(char* line, const char* asked, Host* host) {
    line[strcspn(line, "#")] = '\0';
    char* address = line + strspn(line, blanks);
    char* names = address + strcspn(address, blanks);
    if (*names == '\0' || !holds_word(names + 1, asked)) return true;
    *names++ = '\0';
    in_addr number;
    if (inet_aton(address, &number) == 0) return true;

    const char* rest = names;
    std::string_view name = take_word(&rest);
    if (!host->name) host->name = CString(strndup(name.data(), name.size()));
    if (!host->name || !host->addresses.push_back(number)) return false;
    for (;;) {
        std::string_view alias = take_word(&rest);
        if (alias.empty()) break;
        if (!host->aliases.add(alias)) return false;
    }
    return name == host->name.get() || host->aliases.add(name);
}

// The lines of the hosts file; none when it cannot be read.
class HostsFile {
  public:
    HostsFile() : file_(fopen("/etc/hosts", "re")) {}
    HostsFile(const HostsFile&) = delete;
    HostsFile& operator=(const HostsFile&) = delete;
    ~HostsFile() {
        free(line_);
        if (file_ != nullptr) fclose(file_);
    }

    // Null at the end; otherwise valid, and the caller's to change, until the next call.
    [[nodiscard]] char* next_line() {
        return file_ != nullptr && getline(&line_, &capacity_, file_) >= 0 ? line_ : nullptr;
    }

  private:
    FILE* file_;
    char* line_ = nullptr;
    size_t capacity_ = 0;
};

// Adds what the library says. False when there is no memory.
bool add_from_library(const char* asked, Host* host) {
    const hostent* found = gethostbyname(asked);
    if (found == nullptr) return true;
    const char* name = found->h_name != nullptr ? found->h_name : "";
    host->name = CString(strdup(name));
    if (!host->name) return false;
    host->family = found->h_addrtype;
    for (char** address = found->h_addr_list; *address != nullptr; address++) {
        in_addr number;
        memcpy(&number, *address, sizeof number);
        if (!host->addresses.push_back(number)) return false;
    }
    char** alias = found->h_aliases;
    if (library_is_musl && *alias != nullptr) alias++;  // the first one is the official name
    for (; *alias != nullptr; alias++) {
        if (!host->aliases.add(*alias)) return false;
    }
    return true;
}

// False when there is no memory. A name with blanks never is a host, but matches a row of names in the hosts file as
// musl reads it. An address is a host of its own.
bool find(const char* asked, Host* host) {
    if (asked[strcspn(asked, blanks)] != '\0') return true;
    in_addr number;
    if (library_is_musl && inet_aton(asked, &number) == 0) {
        HostsFile hosts;
        while (char* line = hosts.next_line()) {
            if (!add_from_line(line, asked, host)) return false;
        }
        if (host->name) return true;
    }
    return add_from_library(asked, host);
}

void print_addresses(const Host& host) {
    const int count = static_cast<int>(host.addresses.size());
    printf("The host has %i address%s.\n", count, count == 1 ? "" : "es");
    for (const in_addr& address : host.addresses) {
        if (host.family != AF_INET) {
            printf("\t??? unknown address family: 0x%04X\n", static_cast<unsigned>(host.family));
            break;
        }
        printf("\t%s\n", inet_ntoa(address));
    }
}

}  // namespace

int gn_nslookup(int argc, char** argv) {
    e_option state;
    e_initoption(&state, &argc, &argv, true);
    for (int c; (c = e_getoption(&state)) != e_end;) {
        if (c == e_help) return cli::help(usage);
        return cli::unknown_switch(stdout, "Unknown switch: -%c\n", c);
    }
    if (argc == 0) return cli::help(usage);
    if (argc > 1) return cli::fail("nslookup: extra operand '%s'\n", argv[1]);

    const char* name = argv[0];
    Host host;
    if (!find(name, &host)) return cli::fail("nslookup: %s: %s\n", name, gn_strerror(ENOMEM));
    if (!host.name) return cli::fail("nslookup: no such host: '%s'\n", name);

    if (*host.name.get() != '\0') printf("Name: %s\n", host.name.get());
    print_addresses(host);
    host.aliases.print();
    return output::finish("nslookup", 0);
}
