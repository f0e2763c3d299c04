// Reads the reference table of the special functions (tests/data/
// special_functions_reference.tsv) for the accuracy tests.
#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace special_reference {

struct Row {
    std::string routine;
    std::string arg[3];
    std::string value;
    double a(int i) const { return std::stod(arg[i]); }
    int n(int i) const { return std::stoi(arg[i]); }
    double v() const { return std::stod(value); }
};

// All rows of one routine, in the order of the table.
inline std::vector<Row> rowsOf(const std::string& routine) {
    std::ifstream in(std::string(ZEMOK_TEST_DATA) + "/special_functions_reference.tsv");
    std::vector<Row> rows;
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream fields(line);
        Row r;
        std::getline(fields, r.routine, '\t');
        if (r.routine != routine) continue;
        for (std::string& a : r.arg) std::getline(fields, a, '\t');
        std::getline(fields, r.value);
        rows.push_back(r);
    }
    return rows;
}

}  // namespace special_reference
