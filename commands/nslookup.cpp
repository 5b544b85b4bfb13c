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
#include <sys/socket.h>

#include "app/tools.h"
#include "common/cli.h"
#include "common/output.h"
#include "lib/containers/container_vector.h"
#include "lib/option/option.h"

namespace {

constexpr const char* usage[] = {
    "Usage: nslookup SERVER\n",
    "Query Internet name servers.\n",
};

constexpr const char* blanks = " \t\n\v\f\r";

// Aliases in their order, as the lines that are printed.
class Aliases {
  public:
    // False when there is no memory.
    [[nodiscard]] bool add(std::string_view name) {
        count_++;
        return lines_.push_back('\t') && lines_.append({name.data(), name.size()}) && lines_.push_back('\n');
    }

    [[nodiscard]] bool empty() const { return count_ == 0; }

    void print() const {
        printf("The host has %i alias%s.\n", count_, count_ == 1 ? "" : "es");
        if (count_ > 0) output::write({lines_.data(), lines_.size()});
    }

  private:
    int count_ = 0;
    Vector<char> lines_;
};

bool equal(const char* a, const char* b) {
    return strcmp(a, b) == 0;
}

// The next word of a text, which loses it; empty at the end.
std::string_view take_word(const char** text) {
    *text += strspn(*text, blanks);
    std::string_view word(*text, strcspn(*text, blanks));
    *text += word.size();
    return word;
}

bool holds_word(const char* text, std::string_view wanted) {
    for (;;) {
        std::string_view word = take_word(&text);
        if (word.empty() || word == wanted) return !word.empty();
    }
}

// Adds what a line of the hosts file says of the host that was asked for:
//     ADDRESS NAME [ALIAS]... [# COMMENT]
// The line's own name comes last, unless it is the official one. False when there is no memory.
bool add_from_line(char* line, const char* asked, const char* official, Aliases* aliases) {
    line[strcspn(line, "#")] = '\0';
    char* address = line + strspn(line, blanks);
    char* names = address + strcspn(address, blanks);
    if (*names == '\0' || !holds_word(names + 1, asked)) return true;
    *names++ = '\0';
    in_addr ignored;
    if (inet_aton(address, &ignored) == 0) return true;

    const char* rest = names;
    std::string_view name = take_word(&rest);
    for (;;) {
        std::string_view alias = take_word(&rest);
        if (alias.empty()) break;
        if (!aliases->add(alias)) return false;
    }
    return name == official || aliases->add(name);
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

// Collects the aliases of the host that was asked for. musl knows two at most, the official name, which is
// none, and the name that was asked for; it leaves out what the hosts file says. Other C libraries keep the
// official name out of the list and do not need the repair. False when there is no memory.
bool collect(const hostent& host, const char* asked, Aliases* aliases) {
    char** list = host.h_aliases;
    if (*list != nullptr && host.h_name != nullptr && equal(*list, host.h_name)) {
        list++;
        HostsFile hosts;
        while (char* line = hosts.next_line()) {
            if (!add_from_line(line, asked, host.h_name, aliases)) return false;
        }
        if (!aliases->empty()) return true;
    }
    for (; *list != nullptr; list++) {
        if (!aliases->add(*list)) return false;
    }
    return true;
}

void print_addresses(const hostent& host) {
    int count = 0;
    while (host.h_addr_list[count] != nullptr) count++;
    printf("The host has %i address%s.\n", count, count == 1 ? "" : "es");
    for (int i = 0; i < count; i++) {
        if (host.h_addrtype != AF_INET) {
            printf("\t??? unknown address family: 0x%04X\n", static_cast<unsigned>(host.h_addrtype));
            break;
        }
        in_addr address;
        memcpy(&address, host.h_addr_list[i], sizeof address);
        printf("\t%s\n", inet_ntoa(address));
    }
}

// Null when there is no such host. A name with blanks never is one, but matches a row of names in the hosts
// file as musl reads it.
const hostent* find(const char* name) {
    return name[strcspn(name, blanks)] == '\0' ? gethostbyname(name) : nullptr;
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
    const hostent* host = find(name);
    if (host == nullptr) return cli::fail("nslookup: no such host: '%s'\n", name);
    Aliases aliases;
    if (!collect(*host, name, &aliases)) return cli::fail("nslookup: %s: %s\n", name, gn_strerror(ENOMEM));

    if (host->h_name != nullptr && host->h_name[0] != '\0') printf("Name: %s\n", host->h_name);
    print_addresses(*host);
    aliases.print();
    return output::finish("nslookup", 0);
}
