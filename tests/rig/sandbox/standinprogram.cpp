// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program that every stand-in of the sandbox is: it stands in PATH under the name of the program it plays, notes
// down how it was called, and does what its script says. Plain C++ so that it starts in no time.
//
// Where it was started from tells which program it plays: FOLDER/bin/NAME has its script in FOLDER/scripts/NAME, and
// all stand-ins append their calls to FOLDER/calls.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <unistd.h>

namespace
{

// What the test cannot have meant: no code of a program that is stood in for.
constexpr int brokenRigCode = 126;
constexpr unsigned longestLife = 120;

[[noreturn]] void fail(const std::string &what)
{
    std::fprintf(stderr, "stand-in: %s: %s\n", what.c_str(), std::strerror(errno));
    std::_Exit(brokenRigCode);
}

// A record is its number of arguments and of environment entries, then all of them, each ended by a NUL. It is written
// at once, so that calls at the same time do not mix.
void noteCall(const std::string &path, const std::string &program, char **arguments)
{
    int argumentCount = 0;
    int environmentCount = 0;
    std::string texts;
    for (char **argument = arguments + 1; *argument != nullptr; ++argument, ++argumentCount) {
        texts.append(*argument).push_back('\0');
    }
    for (char **entry = environ; *entry != nullptr; ++entry, ++environmentCount) {
        texts.append(*entry).push_back('\0');
    }
    std::string record = program;
    record.push_back('\0');
    record.append(std::to_string(argumentCount)).push_back('\0');
    record.append(std::to_string(environmentCount)).push_back('\0');
    record += texts;

    const int log = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (log < 0 || write(log, record.data(), record.size()) != static_cast<ssize_t>(record.size())) {
        fail(path);
    }
    close(log);
}

void writeAll(int channel, const std::string &bytes)
{
    for (size_t done = 0; done < bytes.size();) {
        const ssize_t count = write(channel, bytes.data() + done, bytes.size() - done);
        if (count < 0) {
            // The caller no longer reads: a program would end here as well.
            std::_Exit(1);
        }
        done += static_cast<size_t>(count);
    }
}

void sleepFor(long milliseconds)
{
    timespec rest = {milliseconds / 1000, (milliseconds % 1000) * 1000000};
    while (nanosleep(&rest, &rest) != 0 && errno == EINTR) {
    }
}

[[noreturn]] void crash(int number)
{
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    std::signal(number, SIG_DFL);
    std::raise(number);
    fail("the signal did not end the program");
}

void perform(std::istream &script)
{
    std::string line;
    while (std::getline(script, line)) {
        std::istringstream words(line);
        std::string step;
        long number = 0;
        words >> step >> number;
        if (step == "out" || step == "err") {
            std::string bytes(static_cast<size_t>(number), '\0');
            script.read(bytes.data(), number);
            writeAll(step == "out" ? STDOUT_FILENO : STDERR_FILENO, bytes);
        } else if (step == "sleep") {
            sleepFor(number);
        } else if (step == "hang") {
            for (;;) {
                pause();
            }
        } else if (step == "ignore-termination") {
            std::signal(SIGTERM, SIG_IGN);
        } else if (step == "exit") {
            std::_Exit(static_cast<int>(number));
        } else if (step == "crash") {
            crash(static_cast<int>(number));
        } else {
            errno = EINVAL;
            fail(step);
        }
    }
}

} // namespace

int main(int, char **arguments)
{
    alarm(longestLife);
    // argv[0] is the caller's choice; the path that was executed is the kernel's word.
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel hands pointers over as numbers here
    const std::string path = reinterpret_cast<const char *>(getauxval(AT_EXECFN));
    const size_t nameStart = path.rfind('/') + 1;
    const size_t folderEnd = path.rfind("/bin/");
    if (nameStart == 0 || folderEnd == std::string::npos) {
        errno = ENOENT;
        fail(path);
    }
    const std::string program = path.substr(nameStart);
    const std::string folder = path.substr(0, folderEnd);
    noteCall(folder + "/calls", program, arguments);

    const std::string scriptPath = folder + "/scripts/" + program;
    std::ifstream script(scriptPath, std::ios::binary);
    if (!script) {
        fail(scriptPath);
    }
    perform(script);
    return 0;
}
