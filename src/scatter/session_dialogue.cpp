// First part of the fit dialogue: runSessionPartA, findAnswersFile,
// readPhaseCount, readPhaseDescription, readPhaseDescriptions, restoreFitSysinf.
#include "scatter/session_dialogue.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/command_line.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "scatter/answers_file.h"
#include "scatter/model_curves.h"
#include "scatter/phases.h"
#include "textfile/number_text.h"
#include "core/string_tools.h"
#include "textfile/word_splitter.h"

#include <string>
#include <vector>

namespace {

constexpr int kKeyWidth = 80;
constexpr int kModeWidth = 50;

std::string trimmedText(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

// The file name behind "UC=" of a key (case as typed), into ansFile.
void takeAnswersName(const std::string& key) {
    int save[6] = {0, 0, 0, 0, 0, 0};
    std::string word(FitSession.ansFile.size(), ' ');
    int wordLen = 0, status = 0;
    R02TNW(key, 2, "=", word, wordLen, save, status);
    FitSession.ansFile = status >= 0 ? word : std::string(FitSession.ansFile.size(), ' ');
}

// Step A4: TEST or EXPERIMENT, compared exactly; any other word leaves the
// mode unset, which works as EXPERIMENT.
void readRunMode() {
    std::string word(kModeWidth, ' ');
    if (!readAnswerWord(word, "the run mode TEST or EXPERIMENT is asked for.")) return;
    const std::string mode = trimmedText(word);
    if (mode == "TEST") {
        FitSession.testMode = 'Y';
    } else if (mode == "EXPERIMENT") {
        FitSession.testMode = 'N';
    } else {
        I05MES("USERF ----W- Run mode \"" + mode + "\" is neither TEST nor EXPERIMENT: the data are measured.");
    }
}

// One step of the description of a phase: a row of three numbers into a
// triple, the distribution code, or the cylinder length.
enum class StepKind { Row, Dist, Len };
struct PhaseStep {
    StepKind kind;
    TripleColumn PhaseTableRecord::*column;
    const char* name;
};

std::vector<PhaseStep> stepsOf(int type) {
    using R = PhaseTableRecord;
    const PhaseStep dist{StepKind::Dist, nullptr, "iDist"};
    auto row = [](TripleColumn R::*c, const char* n) { return PhaseStep{StepKind::Row, c, n}; };
    switch (type) {
        case kPhaseSphere:
            return {row(&R::Vf, "Vf"), row(&R::Rin, "Rin"), row(&R::roin, "roin"),
                    row(&R::Rout, "Rout"), row(&R::roout, "roout"), row(&R::dR, "dR"),
                    row(&R::Rhs, "Rhs"), dist, row(&R::tau, "tau")};
        case kPhaseCylinder:
            return {row(&R::Vf, "Vf"), row(&R::RinC, "RinC"), row(&R::roin, "roin"),
                    row(&R::RoutC, "RoutC"), row(&R::roout, "roout"), row(&R::dR, "dR"), dist,
                    PhaseStep{StepKind::Len, nullptr, "Len"}};
        case kPhaseDumbbell:
            return {row(&R::Vf, "Vf"), row(&R::Rin, "Rin"), row(&R::roin, "roin"),
                    row(&R::Rout, "Rout"), row(&R::roout, "roout"), row(&R::dR, "dR"), dist};
        case kPhaseEllipsoid:
            return {row(&R::Vf, "Vf"), row(&R::Rell, "Rell"), row(&R::nu, "nu")};
        default:
            return {};
    }
}

bool readPhaseStep(int phase, const PhaseStep& step) {
    const auto ip = static_cast<std::size_t>(phase - 1);
    const std::string of = std::string(step.name) + " of phase " + std::to_string(phase);
    switch (step.kind) {
        case StepKind::Row: {
            double v[3] = {0.0, 0.0, 0.0};
            if (!readAnswerReals(v, 3, "value, lower and upper bound of " + of + " are asked for.")) {
                return false;
            }
            (PhaseTable.*step.column)[ip] = ParamTriple{v[0], v[1], v[2]};
            return true;
        }
        case StepKind::Dist:
            return readAnswerInt(PhaseTable.iDist[ip], "the distribution code " + of + " is asked for.");
        case StepKind::Len:
            return readAnswerReals(&PhaseTable.Len[ip], 1, "the length " + of + " is asked for.");
    }
    return false;
}

// The name word of a phase, asked until it names a phase type.
bool readPhaseWord(int phase, std::string& word) {
    for (;;) {
        word.assign(kPhaseNameWidth, ' ');
        if (!readAnswerWord(word, "a phase word is asked for.")) return false;
        if (phaseTypeOf(word) != kPhaseNone) return true;
        refuseAnswer("it names no phase type; enter SPHERE, CYLINDER, DUMBBELL or ELLIPSOID "
                     "for phase " + std::to_string(phase) + ".");
    }
}

}  // namespace

void restoreFitSysinf() {
    sysinf.CPUtype = padded("x86", kSysWordWidth);
    sysinf.OStype = padded("MS_DOS", kSysWordWidth);
    sysinf.FileSystemType = padded("FAT32", kSysWordWidth);
    sysinf.screenW = 80;
    sysinf.screenH = 25;
    sysinf.CursorPosition = 60;
    sysinf.inUnit = 5;
    sysinf.outUnit = 6;
}

void findAnswersFile() {
    const std::vector<std::string>& keys = commandLineLists().keys;
    FitSession.ansFile.assign(128, ' ');
    if (keys.empty()) {
        FitSession.ansFile = padded("vardene.ans", 128);
    } else {
        const std::vector<std::string> table = {"UC"};
        for (const std::string& key : keys) {
            const std::string text = key.size() > 1 ? key.substr(1, kKeyWidth) : std::string();
            std::string upper = text;
            R02CASE(upper, 1);
            writeList(sysinf.outUnit, " -1- ", trimmedText(upper));
            std::string head = (upper + "  ").substr(0, 2);
            int nOcc = 0, length = 0;
            R02ABBR(head, table, 1, nOcc, length, 2, 2);
            writeList(sysinf.outUnit, " nOcc = ", nOcc);
            if (nOcc != 1) continue;
            writeList(sysinf.outUnit, " -2- ", trimmedText(upper));
            if (upper.rfind("UC", 0) == 0) {
                takeAnswersName(text);
                break;
            }
        }
    }
    writeList(sysinf.outUnit, trimmedText(FitSession.ansFile));
}

void readPhaseCount() {
    int n = 0;
    for (;;) {
        ASKINUM("Enter Number of phases", n);
        if (n >= 1 && n <= kMaxPhaseEntries) break;
        if (unit::terminalInputEnded()) {
            n = 0;
            break;
        }
        refuseAnswer("1 to 10 phases can be described.");
        n = 0;
    }
    clearPhaseTable();
    resetModelCurves();
    PhaseTable.nPhase = n;
}

bool readPhaseDescription(int phase) {
    const auto ip = static_cast<std::size_t>(phase - 1);
    std::string word;
    if (!readPhaseWord(phase, word)) return false;
    PhaseTable.phaseName[ip] = word;
    PhaseTable.phaseType[ip] = phaseTypeOf(word);
    for (const PhaseStep& step : stepsOf(PhaseTable.phaseType[ip])) {
        if (!readPhaseStep(phase, step)) {
            PhaseTable.phaseType[ip] = kPhaseNone;
            return false;
        }
    }
    return true;
}

void readPhaseDescriptions() {
    for (int p = 1; p <= PhaseTable.nPhase; ++p) {
        if (!readPhaseDescription(p)) {
            PhaseTable.nPhase = p - 1;
            I05MES("USERF ----E- The input has ended: " + std::to_string(p - 1) +
                   " phases are described.");
            return;
        }
    }
}

void runSessionPartA() {
    findAnswersFile();
    FitSession.ansFound = openAnswersFile(FitSession.ansFile);
    ASKSTR(" Enter the series title", "", FitSession.seriesTitle);
    ASKSTR(" Enter comment line ", "", FitSession.seriesComment);
    readRunMode();
    readPhaseCount();
    FitSession.cSys = 0.0;
    ASKRNUM("Enter concentration of the system", FitSession.cSys);
    FitSession.noiseT = 0.0;
    if (FitSession.testMode == 'Y') ASKRNUM("Enter noise for model data for testing", FitSession.noiseT);
    readPhaseDescriptions();
}
