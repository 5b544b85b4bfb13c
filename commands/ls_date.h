// Dates of listings. The C library's calendar takes longer for a file than all the rest of its line, so it is
// asked at marks some days apart only.

#pragma once

#include <cstdint>
#include <ctime>
#include <string_view>

namespace ls {

class DateWriter {
  public:
    explicit DateWriter(bool utc) : utc_(utc) {}

    // The text of a time, "year-month-day hour:minute:second" without padding of the year and with the hour
    // padded by a blank; "-" for a time whose year no calendar holds. Valid until the next call.
    [[nodiscard]] std::string_view text(time_t time);

  private:
    struct Moment {
        int64_t year;
        unsigned month;  // 1 to 12
        unsigned day;
        unsigned hour;
        unsigned minute;
        unsigned second;
    };
    static Moment from_seconds(int64_t seconds);
    static bool from_library(time_t time, Moment* moment);
    static bool offset_at(int64_t time, int64_t* offset);
    static int64_t offset_at_mark(int64_t number);
    static bool local_moment(int64_t time, Moment* moment);

    bool utc_;
    time_t time_ = 0;  // whose text is there: files often come in groups of one age
    size_t length_ = 0;
    char text_[32];
};

}  // namespace ls
