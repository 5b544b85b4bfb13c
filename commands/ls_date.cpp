#include "commands/ls_date.h"

#include <charconv>
#include <climits>

#include "common/times.h"

namespace ls {

namespace {

constexpr int64_t seconds_a_day = 86400;

// Marks stand this many seconds apart, three days.
constexpr int mark_bits = 18;

// What local time is ahead of UTC at a mark. Enough of them for the files of thirty years.
struct Mark {
    int64_t number;
    int64_t offset;
    bool known;
};
constexpr size_t mark_count = 4096;
Mark marks[mark_count];

// The library's calendar does not reach there.
constexpr int64_t no_offset = INT64_MIN;

// Days are counted from 1970-01-01, in eras of 400 years that begin with a March, so that the leap day is the
// last one of its year.
constexpr int64_t days_an_era = 146097;
constexpr int64_t days_before_epoch = 719468;

int64_t days_until(int64_t year, int64_t month, int64_t day) {
    if (month <= 2) year--;
    const int64_t era = (year >= 0 ? year : year - 399) / 400;
    const int64_t year_of_era = year - era * 400;
    const int64_t day_of_year = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const int64_t day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
    return era * days_an_era + day_of_era - days_before_epoch;
}

inline char* put_two(char* end, unsigned number, char fill) {
    const unsigned tens = number / 10;
    end[0] = tens == 0 ? fill : static_cast<char>('0' + tens);
    end[1] = static_cast<char>('0' + number - tens * 10);
    return end + 2;
}

}  // namespace

DateWriter::Moment DateWriter::from_seconds(int64_t seconds) {
    int64_t days = seconds / seconds_a_day;
    int64_t rest = seconds % seconds_a_day;
    if (rest < 0) {
        rest += seconds_a_day;
        days--;
    }
    days += days_before_epoch;
    const int64_t era = (days >= 0 ? days : days - (days_an_era - 1)) / days_an_era;
    const auto day_of_era = static_cast<unsigned>(days - era * days_an_era);
    const unsigned year_of_era =
        (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
    const unsigned day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
    const unsigned month = (5 * day_of_year + 2) / 153;
    const auto second_of_day = static_cast<unsigned>(rest);
    return {
        .year = era * 400 + year_of_era + (month >= 10 ? 1 : 0),
        .month = month < 10 ? month + 3 : month - 9,
        .day = day_of_year - (153 * month + 2) / 5 + 1,
        .hour = second_of_day / 3600,
        .minute = second_of_day / 60 % 60,
        .second = second_of_day % 60,
    };
}

bool DateWriter::from_library(time_t time, Moment* moment) {
    tm date{};
    if (localtime_wrap(&time, &date) != 0) return false;
    *moment = {
        .year = int64_t{date.tm_year} + 1900,
        .month = static_cast<unsigned>(date.tm_mon) + 1,
        .day = static_cast<unsigned>(date.tm_mday),
        .hour = static_cast<unsigned>(date.tm_hour),
        .minute = static_cast<unsigned>(date.tm_min),
        .second = static_cast<unsigned>(date.tm_sec),
    };
    return true;
}

bool DateWriter::offset_at(int64_t time, int64_t* offset) {
    Moment local;
    if (!from_library(time, &local)) return false;
    const unsigned second_of_day = local.hour * 3600 + local.minute * 60 + local.second;
    *offset = days_until(local.year, local.month, local.day) * seconds_a_day + second_of_day - time;
    return true;
}

int64_t DateWriter::offset_at_mark(int64_t number) {
    Mark& mark = marks[static_cast<uint64_t>(number) % mark_count];
    if (!mark.known || mark.number != number) {
        mark = {.number = number, .offset = no_offset, .known = true};
        const auto time = static_cast<int64_t>(static_cast<uint64_t>(number) << mark_bits);
        if (!offset_at(time, &mark.offset)) mark.offset = no_offset;
    }
    return mark.offset;
}

bool DateWriter::local_moment(int64_t time, Moment* moment) {
    const int64_t number = time >> mark_bits;
    const int64_t offset = offset_at_mark(number);
    // Clocks are put forward and back at least weeks apart: equal offsets at both marks hold in between.
    if (offset == no_offset || offset != offset_at_mark(number + 1)) return from_library(time, moment);
    *moment = from_seconds(time + offset);
    return true;
}

std::string_view DateWriter::text(time_t time) {
    if (time == time_ && length_ != 0) return {text_, length_};
    Moment moment;
    if (utc_) {
        moment = from_seconds(time);
        // As far as the C library's calendar goes.
        if (moment.year - 1900 < INT_MIN || moment.year - 1900 > INT_MAX) return "-";
    } else if (!local_moment(time, &moment)) {
        return "-";
    }
    time_ = time;
    char* end = std::to_chars(text_, text_ + sizeof text_, static_cast<uint32_t>(moment.year)).ptr;
    *end++ = '-';
    end = put_two(end, moment.month, '0');
    *end++ = '-';
    end = put_two(end, moment.day, '0');
    *end++ = ' ';
    end = put_two(end, moment.hour, ' ');
    *end++ = ':';
    end = put_two(end, moment.minute, '0');
    *end++ = ':';
    end = put_two(end, moment.second, '0');
    length_ = static_cast<size_t>(end - text_);
    return {text_, length_};
}

}  // namespace ls
