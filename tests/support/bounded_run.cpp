// fork and exec of zemok with its input from a file, its output through a
// pipe that is read up to the limit, and a kill at the time limit.
#include "support/bounded_run.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

namespace {

constexpr uid_t kNobody = 65534;

void startChild(const std::string& dir, const std::string& inputFile, const std::vector<std::string>& args,
                int outFd, bool unprivileged) {
    if (unprivileged && geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(126);
    if (chdir(dir.c_str()) != 0) _exit(126);
    int in = open(inputFile.c_str(), O_RDONLY);
    if (in < 0) _exit(126);
    dup2(in, 0);
    dup2(outFd, 1);
    dup2(outFd, 2);
    std::vector<char*> argv;
    std::string program = ZEMOK_BINARY;
    argv.push_back(program.data());
    // A scripted session: the key -C leaves out the title and the question
    // of the dialogue mode.
    std::vector<std::string> copies = args;
    copies.push_back("-C");
    for (std::string& a : copies) argv.push_back(a.data());
    argv.push_back(nullptr);
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    execv(program.c_str(), argv.data());
    _exit(127);
}

}  // namespace

BoundedRun runBounded(const std::string& dir, const std::string& input, const std::vector<std::string>& args,
                      double seconds, std::size_t maxBytes, bool unprivileged) {
    const std::string inputFile = dir + "/.session-input";
    std::ofstream(inputFile, std::ios::binary) << input;
    const std::string ini = dir + "/zemok.ini";
    if (access(ini.c_str(), F_OK) != 0) {
        std::ifstream shipped(std::string(ZEMOK_SOURCE_DIR) + "/data/zemok.ini", std::ios::binary);
        std::ofstream(ini, std::ios::binary) << shipped.rdbuf();
    }
    if (unprivileged) chmod(dir.c_str(), 0777);
    int fds[2];
    BoundedRun run;
    if (pipe(fds) != 0) return run;
    const pid_t pid = fork();
    if (pid == 0) {
        close(fds[0]);
        startChild(dir, inputFile, args, fds[1], unprivileged);
    }
    close(fds[1]);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    char buffer[65536];
    while (true) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            run.timedOut = true;
            break;
        }
        pollfd p{fds[0], POLLIN, 0};
        if (poll(&p, 1, static_cast<int>(left.count())) <= 0) continue;
        const ssize_t got = read(fds[0], buffer, sizeof buffer);
        if (got <= 0) break;
        run.out.append(buffer, static_cast<std::size_t>(got));
        if (run.out.size() > maxBytes) {
            run.tooMuch = true;
            break;
        }
    }
    if (run.timedOut || run.tooMuch) kill(pid, SIGKILL);
    close(fds[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    if (WIFEXITED(status) && !run.timedOut && !run.tooMuch) run.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) run.signal = WTERMSIG(status);
    return run;
}
