// SessionTest: a fixture for the fit dialogue on a scripted terminal with
// answers files written into a fresh temporary folder.
#pragma once

#include "support/temp_folder.h"
#include "core/e4dataset.h"
#include "monitor/monitor.h"
#include "support/terminal_test.h"
#include "scatter/answers_file.h"
#include "scatter/measured_curve.h"
#include "scatter/phases.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

class SessionTest : public TerminalTest {
protected:
    void SetUp() override {
        TerminalTest::SetUp();
        resetAnswersFile();
        resetMeasuredCurve();
        // Short paths: a key of the command line is looked at up to 80 characters.
        dir = freshFolder("s");
        // The log and the result files of the fit are written beside the test.
        home = std::filesystem::current_path();
        std::filesystem::current_path(dir);
    }
    void TearDown() override {
        resetAnswersFile();
        TerminalTest::TearDown();
        std::filesystem::current_path(home);
        std::filesystem::remove_all(dir);
    }
    // Writes a file into the folder; returns its path.
    std::string writeFile(const std::string& name, const std::string& text) {
        const std::string path = (dir / name).string();
        std::ofstream(path) << text;
        return path;
    }
    // Writes the answers file and names it on the program's command line.
    void answers(const std::string& text) {
        splitCommandLine("/UC=" + writeFile("run.ans", text));
    }
    // Runs `body` with `input` as the terminal; returns what was written.
    template <class Body>
    std::string withTerminal(const std::string& input, Body body) {
        unit::setTerminal(&in_, &out_);
        feed(input);
        body();
        return output();
    }
    std::filesystem::path dir, home;
};

// Phase descriptions in the answers file's layout, one row a line.
inline const char* kSphereRows =
    "SPHERE\n1.0 0.0 2.0\n10 5 20\n1.0 -1 2\n50 40 60\n0.5 0 1\n5 1 10\n55 0 100\n1\n0.1 0 0.5\n";
inline const char* kCylinderRows =
    "CYLINDER\n0.5 0.1 0.9\n8 4 12\n2.0 1 3\n30 20 40\n-1 -2 0\n3 1 6\n2\n400\n";
inline const char* kDumbbellRows = "DUMBBELL\n0.25 0 1\n6 3 9\n1.5 1 2\n20 15 25\n0.75 0 1\n2 0 4\n1\n";
inline const char* kEllipsoidRows = "ELLIPSOID\n0.3 0.2 0.4\n70 60 80\n1.5 1.1 3\n";
