// Edit-notation formatter: FmtItem, formatRecords (formatted output as FORMAT
// text describes it) and listDirected (free-form output).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// One item of an output list: an integer, a real or a text.  A text is
// written as it stands, trailing blanks included (a fixed-width field is a
// std::string of that width, blank-padded).
struct FmtItem {
    enum class Kind { Int, Real, Text };
    Kind kind;
    std::int64_t i = 0;
    double r = 0.0;
    std::string s;

    FmtItem(int v) : kind(Kind::Int), i(v) {}
    FmtItem(long v) : kind(Kind::Int), i(v) {}
    FmtItem(long long v) : kind(Kind::Int), i(v) {}
    FmtItem(double v) : kind(Kind::Real), r(v) {}
    FmtItem(float v) : kind(Kind::Real), r(v) {}
    FmtItem(const char* v) : kind(Kind::Text), s(v) {}
    FmtItem(std::string_view v) : kind(Kind::Text), s(v) {}
    FmtItem(const std::string& v) : kind(Kind::Text), s(v) {}
};

using FmtItems = std::vector<FmtItem>;

// The bytes one WRITE produces.  Records are separated by '\n'; the last
// record is not terminated here.  `advance` is false when the format ended
// in '$': the record stays open and the next write goes on in it.
struct FormattedText {
    std::string text;
    bool advance = true;
};

// Formats `items` by the FORMAT text `format`, written as in Fortran source
// with its parentheses, e.g. "(1X,A6,' --- ',1P,G14.6)".  A malformed format
// or an item of the wrong kind for its descriptor is a program error and
// throws std::logic_error.
FormattedText formatRecords(std::string_view format, const FmtItems& items);

// List-directed (free-form) output of one WRITE(*,*): one record, starting
// with one blank.
std::string listDirected(const FmtItems& items);
