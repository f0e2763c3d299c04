// SECTION on f = x1^2 + x2^2 (problem 8 with A = 2 I, minimum 0 at 0),
// started at x1 = 0.125: the direct form with its edge cases and the .sec
// file byte for byte, the SVG beside it, and the local menu; EVALUATE,HESSE
// with no problem to work on.
#include "platform/edit_format.h"
#include "support/run_zemok.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

const std::string kProblem = "PROBLEM,TEST,8\n2\n2 0\n2\nY\n0\n0 0\n\nLOAD,,XSTART,1,0.125\n";
const std::string kEnd = "EXIT\nY\nY\n";

std::size_t count(const std::string& text, const std::string& what) {
    std::size_t n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// True when every element of the document is closed in order.
bool wellFormed(const std::string& xml) {
    std::vector<std::string> open;
    for (std::size_t at = xml.find('<'); at != std::string::npos; at = xml.find('<', at + 1)) {
        const std::size_t end = xml.find('>', at);
        if (end == std::string::npos) return false;
        const std::string tag = xml.substr(at + 1, end - at - 1);
        const std::string name = tag.substr(0, tag.find_first_of(" /"));
        if (tag[0] == '?' || tag.back() == '/') continue;
        if (tag[0] != '/') {
            open.push_back(name);
        } else if (open.empty() || "/" + open.back() != tag) {
            return false;
        } else {
            open.pop_back();
        }
    }
    return open.empty();
}

// The y pixels of the last polyline: the curve, drawn after its markers.
std::vector<int> curveHeights(const std::string& svg) {
    const std::string key = "<polyline points=\"";
    std::istringstream points(svg.substr(svg.rfind(key) + key.size()));
    std::vector<int> y;
    int px = 0, py = 0;
    char comma = 0;
    while (points >> px >> comma >> py && comma == ',') y.push_back(py);
    return y;
}

// Width 1 in 5 points: offsets -0.5 to 0.5 by 0.25, f = (0.125 + offset)^2.
// W = 0 skips the variable and the frame 51 ends the command, neither
// drawing; variable 3 does not exist; with variable 1 fixed the form names
// it and goes on to variable 2; an unwritable file is named.
TEST(SectionTranscript, DirectFormAndItsFile) {
    TempFolder dir;
    ZemokRun run = runZemok(kProblem +
                                "SECTION,1,1,5,17\nSECTION,1,0,5,17\nSECTION,1,1,5,51\nSECTION,3\n"
                                "LOAD,,IFIXER,1,0\nSECTION,,0.5,5,17\nSECTION,FILE=nodir/x,2,1,5,17\n" + kEnd,
                            {}, dir.path());
    std::string sec = " Surface section, Coordinate section for 1 variable.\n";
    for (int k = -2; k <= 2; ++k) {
        const double x = 0.125 + 0.25 * k;
        sec += formatRecords("(12X,2(1P,G25.16))", FmtItems{0.25 * k, x * x}).text + "\n";
    }
    EXPECT_EQ(fileText(dir / "var1.sec"), sec);
    EXPECT_EQ(count(run.out, " Section drawn in var"), 2u) << run.out;
    for (const char* said :
         {" 1-th variable value = 0.125\n Section drawn in var1.svg\n",
          " E4SCT1 -E- The frame must have from 3 to 50 lines: 51\n COMMAND \"SECTION,1,1,5,51\" WAS FAILED TO EXECUTE",
          " E4SCT1 -E- There is no variable No. 3: the problem has 2.",
          " E4SCT1 -E- Attempt to vary fixed variable No. 1\n 2-th variable value = 0\n Section drawn in var2.svg",
          " E4SCT2 ---E- File open error.\n              \"nodir/x2.sec\" was not written", " E4MAIN --- Normal termination"})
        EXPECT_NE(run.out.find(said), std::string::npos) << said;

    const std::string svg = fileText(dir / "var1.svg");
    EXPECT_TRUE(wellFormed(svg));
    const std::vector<int> y = curveHeights(svg);
    ASSERT_EQ(y.size(), 5u) << svg;
    // Points 2 and 3 lowest (greater y is lower), 1 and 4 equal, 5 highest.
    EXPECT_TRUE(y[1] == y[2] && y[0] == y[3] && y[0] < y[1] && y[4] < y[0]);
}

// Plot straight after entry asks Variable, Npoints and Size in order; N,100
// becomes 101; Move,Min goes to point 2, the first of the two lowest
// (f(-0.125) = f(0.125)): x1 = 0.125 - 1/2 + (2 - 1) 0.25 = -0.125.
TEST(SectionTranscript, LocalMenu) {
    TempFolder dir;
    ZemokRun run = runZemok(kProblem + "SECTION,EXPLORE\nPLOT\n1\n5\n\nN,100\nM,MIN\nREPORT\nEXIT\n" + kEnd, {},
                            dir.path());
    std::size_t at = 0;
    for (const char* said : {"Load ordinal number of examined variable", "Load number of histogram points",
                             "Load the section width", " Section drawn in var1.svg",
                             " E4SCT1:  Number of points corrected to odd value 101\n",
                             " ordinal number of examined variable            1\n"
                             " number of histogram points                   101\n",
                             " Coordinates of the original point:\n -0.125000       0.00000    \n"}) {
        at = run.out.find(said, at);
        ASSERT_NE(at, std::string::npos) << said << "\n" << run.out;
    }
}

// From a command file, before any problem: CHECK asks for one, the user's
// problem finds no curve, and the Hessian has nothing to work on; the
// session goes back to the terminal.
TEST(SectionTranscript, HessianBeforeAnyProblem) {
    TempFolder dir;
    writeFile(dir / "h.cmd", "EVALUATE,HESSE\n");
    ZemokRun run = runZemok("", {"/C=h.cmd"}, dir.path());
    EXPECT_NE(run.out.find(" DATA SET IS INCOMPLETE FOR THE COMPUTATION TO PERFORM\n ZEMOK: "), std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find(" E4MAIN --- Normal termination"), std::string::npos);
}

}  // namespace
