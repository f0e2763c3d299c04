// Support of the transcript tests: runZemok, fileText, writeFile.
#include "support/run_zemok.h"
#include "support/temp_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

void writeFile(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
}

namespace {

std::string shellQuoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

}  // namespace

ZemokRun runZemokAsStarted(const std::string& input, const std::vector<std::string>& args,
                           const std::string& workDir, const std::string& home) {
    std::string dir = workDir.empty() ? freshFolder("run") : workDir;
    fs::create_directories(dir);
    std::string inFile = dir + "/.stdin.txt";
    std::string outFile = dir + "/.stdout.txt";
    writeFile(inFile, input);
    std::string cmd = "cd " + shellQuoted(dir) + " && HOME=" + shellQuoted(home) + " " +
                      shellQuoted(ZEMOK_BINARY);
    for (const std::string& a : args) cmd += " " + shellQuoted(a);
    cmd += " < " + shellQuoted(inFile) + " > " + shellQuoted(outFile) + " 2>&1";
    int raw = std::system(cmd.c_str());
    ZemokRun run;
    run.out = fileText(outFile);
    run.exitCode = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return run;
}

ZemokRun runZemok(const std::string& input, const std::vector<std::string>& args,
                  const std::string& workDir) {
    std::string dir = workDir.empty() ? freshFolder("run") : workDir;
    fs::create_directories(dir);
    if (!fs::exists(dir + "/zemok.ini")) {
        writeFile(dir + "/zemok.ini", fileText(std::string(ZEMOK_SOURCE_DIR) + "/data/zemok.ini"));
    }
    auto isKey = [](const std::string& a) { return !a.empty() && (a[0] == '/' || a[0] == '-'); };
    int keys = 0;
    bool keyC = false;
    for (const std::string& a : args) {
        keys += isKey(a);
        keyC = keyC || (isKey(a) && a.size() > 1 && (a[1] == 'C' || a[1] == 'c'));
    }
    std::vector<std::string> started = args;
    if (!keyC) started.push_back("-C");
    const char* home = std::getenv("HOME");
    ZemokRun run = runZemokAsStarted(input, started, dir, home ? home : "");
    // The echo of the added key, as " Key #",I2,": [",A,"]" writes it.
    const std::string number = std::string(keys + 1 < 10 ? " " : "") + std::to_string(keys + 1);
    const std::string echo = " Key #" + number + ": [-C]\n";
    if (std::size_t at = run.out.find(echo); !keyC && at != std::string::npos) run.out.erase(at, echo.size());
    return run;
}
