// The storage file of SAVE and RECOVER: the fields of a data set in the
// order of the file, their labels, and the head that both commands share
// (help, the file named by "FILE=name", the question, the channel).
#pragma once

#include "core/e4dataset.h"
#include "monitor/monitor_state.h"

#include <string>
#include <string_view>
#include <vector>

// The words of a data set that live in sysinf rather than in E4DataSet.
struct StoredChannels {
    int crUnit = 0;
    int drUnit = 0;
    int dwUnit = 0;
    int MODEE4 = 0;
};

// One field of a data set: its name in the label, whether the X form holds
// it, and the array it is written from or read into: an m by n array with
// leading dimension MD (vectors are one row, m = 1).
struct StorageField {
    std::string_view name;
    bool xForm;
    int* ints;      // an integer field, or nullptr
    double* reals;  // a real field, or nullptr
    int MD;
    int m;
    int n;
};

// The fields of `d` (and of the channel words `ch`) for n variables, n in
// 1..128, in file order; the first one is NVAR.
std::vector<StorageField> storageFields(E4DataSetRecord& d, StoredChannels& ch, int n);

// The label line of a field, without its leading blank: the marker, then
// " ~~~~~ name:".
std::string fieldLabel(std::string_view marker, std::string_view name);

// Tags of the three name blocks that close a full data set.
inline constexpr std::string_view kNameTags[3] = {"crName", "drName", "dwName"};

// How the head of SAVE or RECOVER ended when the command does not go on.
struct StorageHead {
    bool proceed = false;        // the command goes on with `file` and `channel`
    Outcome outcome = Outcome::Done;
    std::string file;            // the storage file, trimmed
    int channel = 0;             // the channel of the storage file
};

// The head both commands share: help on a word beginning with H, the file
// from a word "FILE=name" (that word is blanked), the message naming the
// file, the question "Continue?" in interactive mode without word 2, and
// the channel of the storage file.  `section` is the help section.
StorageHead storageCommandHead(MonitorState& m, std::string_view section);

// The X form: word 2 begins with X, or word 2 is blank and word 3 does.
bool storageXForm(const MonitorState& m);

// The failure line of a read or write on the storage file, between two
// empty lines, with the monitor's tag.
void writeStorageFailure(int code);

// The text without blanks at either end.
std::string trimmedBoth(std::string_view text);
