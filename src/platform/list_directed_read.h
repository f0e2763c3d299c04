// Free-form (list-directed) reading: listItems splits a record into item
// texts, listReadInt/listReadReal convert them, ListReader runs one READ.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Status of an item that does not convert (positive, as every read failure).
constexpr int LIST_BAD_ITEM = 1010;

// Splits a record into free-form item texts.  Items are separated by
// blanks, by a comma (with or without blanks around it) or by the record
// end.  A text in ' or " is one item, quotes removed, a doubled quote
// inside standing for one.  "r*value" stands for r items `value`; "r*"
// alone for r null values.  A null value (nothing between two commas, a
// comma first in the record) is an empty item; so is an empty quoted text.
// A '/' outside quotes ends the items of the read: it sets *slash when
// `slash` is given, and the rest of the record is not looked at.
std::vector<std::string> listItems(std::string_view record, bool* slash = nullptr);

// Converts one item: 0 on success, LIST_BAD_ITEM when the text is not a
// number of the kind.  An empty (null) item leaves v unchanged and is a
// success.  Integers: optional sign and digits, within the range of int.
// Reals: "1", "-2", "1.5", "1.5E3", "1.5D3", "1e-3", ".5", "5.", "1.5+3"
// (exponent without its letter), and NaN, Inf, Infinity in any case; a
// value beyond the range of a double fails.
int listReadInt(std::string_view item, int& v);
int listReadReal(std::string_view item, double& v);

// One free-form READ of n values that may run over several records.
// `nextRecord` fills its argument with the next record and returns 0, or
// returns unit::IOSTAT_END (-1) at the end of input, or a positive failure
// status.  Each read fetches at least one record and stops at the record
// that supplies the n-th item; items left in that record are discarded.
// Blank records are passed over.  A '/' ends the read early with the
// values not reached left unchanged, as null values leave theirs.
// Results: 0; the status of nextRecord when input ends or fails before n
// items (the values read so far are stored); LIST_BAD_ITEM on an item that
// does not convert.
class ListReader {
public:
    explicit ListReader(std::function<int(std::string&)> nextRecord);

    int readInts(int* v, int n);
    int readReals(double* v, int n);
    // Words or quoted texts.  A text variable that holds characters keeps
    // its length (the item is cut or padded with blanks); an empty one
    // takes the item as it is.
    int readTexts(std::string* v, int n);

private:
    int readItems(int n, const std::function<int(const std::string&, int)>& store);
    std::function<int(std::string&)> nextRecord_;
};
