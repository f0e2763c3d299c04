// The phase table and the session fields: PhaseTable, FitSession,
// clearPhaseTable, resetFitSession, phaseTypeOf, phaseBlockLength.
#include "scatter/phases.h"

#include "core/string_tools.h"

PhaseTableRecord PhaseTable;
FitSessionRecord FitSession;

void clearPhaseTable() {
    PhaseTable = PhaseTableRecord{};
    for (std::string& name : PhaseTable.phaseName) name.assign(kPhaseNameWidth, ' ');
}

void resetFitSession() {
    clearPhaseTable();
    FitSession = FitSessionRecord{};
    FitSession.seriesTitle.assign(60, ' ');
    FitSession.seriesComment.assign(60, ' ');
    FitSession.ansFile.assign(128, ' ');
}

int phaseTypeOf(std::string_view word) {
    static constexpr std::string_view kWords[] = {"SPHERE", "CYLINDER", "DUMBBELL", "ELLIPSOID"};
    const std::string_view trimmed = word.substr(0, static_cast<std::size_t>(R02LEN(word)));
    for (int t = 0; t < 4; ++t) {
        if (trimmed == kWords[t]) return t + 1;
    }
    return kPhaseNone;
}

int phaseBlockLength(int type) {
    switch (type) {
        case kPhaseSphere: return 8;
        case kPhaseCylinder: return 7;
        case kPhaseDumbbell: return 6;
        case kPhaseEllipsoid: return 3;
        default: return 0;
    }
}
