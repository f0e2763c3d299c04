// The local menu of sections (SECTION,EXPLORE): its reading loop, its
// command stack, the dispatch, the failure handling, Help and Report.
#include "monitor/section_menu.h"

#include "core/console_layer.h"
#include "core/string_tools.h"
#include "core/sysinf.h"
#include "monitor/command_words.h"
#include "monitor/monitor_state.h"
#include "monitor/section.h"
#include "platform/units.h"
#include "textfile/command_stack.h"
#include "textfile/line_splitters.h"
#include "textfile/prompts.h"

#include <cctype>
#include <cstdlib>

namespace section_menu {

namespace {

constexpr int kMenuStack = 20;

constexpr std::array<std::string_view, 7> kRows = {
    "ordinal number of examined variable", "number of histogram points",
    "length of the section along the direction", "histogram function values",
    "output device", "direction vector", "--- UNDEFINED ---"};

void stackOperation(Menu& m, std::string& text, std::string_view action) {
    int status = 0;
    R02CSO(text, action, m.stack, kMenuStack, m.sp, status);
    if (status < 0 && status != -4 && status != -5) {
        write(6, "(A)", " COMMAND STACK ERROR");
        std::exit(1);
    }
}

void help() {
    write(sysinf.outUnit,
          "(1X,/,' Local menu:',/,/,' Help ------- to get this list',/,' Variable --- to select ',A,/,"
          "' Npoints ---- to set ',A,/,' Size ------- to set ',A,/,' Plot ------- to plot produced ',A,/,"
          "' Move ------- to change the current argument value',/,"
          "' Report ----- to report current information',/,' File=name -- to force output to a disk file',/,"
          "' Direct ----- to set the section direction',/,' Exit ------- to quit to ZEMOK menu',/,/,"
          "4X,'One can enter numerical value of any desired',' parameter as a',/,"
          "' second-level command following the',' root one. Command \"Move\" may',/,"
          "' have its subcommands',' either \"Min\" or  [value]  where \"Min\" denotes',/,"
          "' that',' the argument value will jump to the minimum point',' automatically',/,"
          "' and [value] specifies the number of',' the histogram point to which',/,"
          "' the argument is to be',' moved.',/,' Format of the \"Direct\" command is:',/,"
          "'    Direct,Hessian,#',/,' where # is the number of the Hessian eigenvector.',/)",
          parameterRow(1), parameterRow(2), parameterRow(3), parameterRow(4));
}

void report(Menu& m) {
    const int u = sysinf.outUnit;
    write(u, "(1X,/,1X,A40,I8,/,1X,A40,I8)", parameterRow(1), m.at(Variable), parameterRow(2), m.at(Points));
    write(u, "(1X,A40,G16.7)", parameterRow(3), m.W);
    write(u, "(1X,/,' Coordinates of the original point:')");
    int status = 0;
    I5WRA1(u, m.x, 1, 1, m.n, "", status);
    write(u, "()");
}

Result dispatch(Menu& m) {
    const std::string w1 = m.word(1);
    switch (std::toupper(static_cast<unsigned char>(w1.empty() ? ' ' : w1[0]))) {
        case 'H': help(); return Result::Done;
        case 'V': return variable(m);
        case 'N': return npoints(m);
        case 'S': return size(m);
        case 'P': return plot(m);
        case 'M': return move(m);
        case 'R': report(m); return Result::Done;
        case 'D': return direct(m);
        case 'F': return file(m);
        default: break;
    }
    if (R02PFX(w1, "EX", 1)) return Result::Exit;
    return Result::Illegal;
}

// A command failed or was illegal: true when the menu is to be left.
bool failure(Menu& m, Result r, int& err) {
    const std::string text = m.line.substr(0, static_cast<std::size_t>(R02LEN(m.line)));
    E04MES(r == Result::Illegal ? "ILLEGAL COMMAND: \"" + text + "\""
                                : "COMMAND \"" + text + "\" WAS FAILED TO PERFORM");
    if (sysinf.MODEE4 != 0) {
        err = 10;
        return true;
    }
    // What stands under the failed line was waiting for it: it goes too.
    m.clear();
    if (!commandsFromTerminal()) giveUpCommandFile();
    return false;
}

// One line from the terminal or the command file; false when nothing more
// can come.
bool readLine(Menu& m) {
    while (true) {
        std::string line(kLineWidth, ' ');
        int status = 0;
        const bool terminal = commandsFromTerminal();
        I5ROL2(line, "E4SCT1", sysinf.crUnit, sysinf.dwUnit, sysinf.MODEE4, status);
        if (status != 0) {
            E04MES("COMMAND READING ERROR");
            if (terminal && (unit::terminalInputEnded() || sysinf.MODEE4 != 0)) return false;
            if (!terminal) giveUpCommandFile();
            continue;
        }
        if (R02LEN(line) == 0) continue;
        m.push(line);
        return true;
    }
}

}  // namespace

std::string parameterRow(int k) { return padded(kRows[static_cast<std::size_t>(k - 1)], 50); }

std::string Menu::word(int k) const {
    const std::string& w = words[static_cast<std::size_t>(k - 1)];
    return w.substr(0, static_cast<std::size_t>(R02LEN(w)));
}

void Menu::push(std::string_view text) {
    std::string t = padded(text, kLineWidth);
    stackOperation(*this, t, "PUSH");
}

void Menu::pop() {
    std::string t(kLineWidth, ' ');
    if (sp > 0) stackOperation(*this, t, "POP");
}

void Menu::clear() {
    std::string t(kLineWidth, ' ');
    stackOperation(*this, t, "CLEAR");
}

void Menu::readTop() {
    line.assign(kLineWidth, ' ');
    stackOperation(*this, line, "READ");
    for (std::string& w : words) w.assign(kWordWidth, ' ');
    int status = 0;
    R02CLS(line, words.data(), 6, 1, kCommandDelimiters, kCommandComments, status);
}

std::string Menu::ask(std::string_view question, std::string_view def) const {
    const std::string reply = askReply(question, def, sysinf.CursorPosition);
    return unit::terminalInputEnded() ? std::string("EXIT") : reply;
}

}  // namespace section_menu

void sectionMenu(double& f, double* x, int n, std::string_view fileName, int& err) {
    using namespace section_menu;
    err = 0;
    Menu m(f, x, n);
    m.stack.assign(kMenuStack, std::string(kLineWidth, ' '));
    m.given = std::string(fileName);
    const E4DataSetRecord& d = E4DataSet;
    if (d.iStat(row::directSet) != 0) {
        m.at(AlongDirection) = 1;
        m.dirv = d.direct;
        m.stemWord = "_section";
        m.title = "along the specified direction";
    }
    while (readLine(m)) {
        while (m.sp > 0) {
            m.readTop();
            const Result r = dispatch(m);
            if (r == Result::Exit) return;
            if (r == Result::Done) m.pop();
            if (r == Result::Abandon) m.clear();
            if ((r == Result::Failed || r == Result::Illegal) && failure(m, r, err)) return;
        }
    }
}
