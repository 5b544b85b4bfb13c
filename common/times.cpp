#include "common/times.h"

int gn_print_timespec(FILE* stream, const timespec* time, bool utc) {
    tm date{};
    if (time->tv_sec == 0 || (utc ? gmtime_wrap : localtime_wrap)(&time->tv_sec, &date) != 0) {
        return fprintf(stream, "-");
    }
    return fprintf(stream, "%4u-%02u-%02u %02u:%02u:%02u.%09llu", static_cast<unsigned>(date.tm_year) + 1900U,
                   static_cast<unsigned>(date.tm_mon) + 1U, static_cast<unsigned>(date.tm_mday),
                   static_cast<unsigned>(date.tm_hour), static_cast<unsigned>(date.tm_min),
                   static_cast<unsigned>(date.tm_sec), static_cast<unsigned long long>(time->tv_nsec));
}

int gmtime_wrap(const time_t* time, tm* broken_down) {
    return gmtime_r(time, broken_down) != nullptr ? 0 : -1;
}

int localtime_wrap(const time_t* time, tm* broken_down) {
    return localtime_r(time, broken_down) != nullptr ? 0 : -1;
}
