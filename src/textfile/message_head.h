// messageHead: the start of a text-service message, the routine's tag and
// its severity mark with the mark's letter in the eleventh column.
#pragma once

#include <string>
#include <string_view>

// "R02CLS" and 'E' give "R02CLS ---E- "; "R02CLS2" and 'W' "R02CLS2 --W- ".
inline std::string messageHead(std::string_view tag, char mark) {
    std::string head(tag);
    head += ' ';
    while (head.size() < 10) head += '-';
    head += mark;
    head += "- ";
    return head;
}
