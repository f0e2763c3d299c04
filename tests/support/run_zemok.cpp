// Support of the transcript tests: runZemok, freshFolder, fileText, writeFile.
#include "support/run_zemok.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::string freshFolder(const std::string& stem) {
    static int counter = 0;
    fs::path dir = fs::temp_directory_path() /
                   ("zemok-" + stem + "-" + std::to_string(getpid()) + "-" + std::to_string(++counter));
    fs::remove_all(dir);
    fs::create_directories(dir);
    return dir.string();
}

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

ZemokRun runZemok(const std::string& input, const std::vector<std::string>& args,
                  const std::string& workDir) {
    std::string dir = workDir.empty() ? freshFolder("run") : workDir;
    fs::create_directories(dir);
    std::string inFile = dir + "/.stdin.txt";
    std::string outFile = dir + "/.stdout.txt";
    writeFile(inFile, input);
    std::string cmd = "cd " + shellQuoted(dir) + " && " + shellQuoted(ZEMOK_BINARY);
    for (const std::string& a : args) cmd += " " + shellQuoted(a);
    cmd += " < " + shellQuoted(inFile) + " > " + shellQuoted(outFile) + " 2>&1";
    int raw = std::system(cmd.c_str());
    ZemokRun run;
    run.out = fileText(outFile);
    run.exitCode = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return run;
}
