// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServedProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <thread>

#include "BasicCredentials.h"
#include "BuildPaths.h"
#include "HttpUrl.h"
#include "InProcessServer.h"
#include "MofParser.h"
#include "Serve.h"

using namespace QZ;

namespace {

std::unique_ptr<InProcessServer> _providers() {
    Schema schema = Schema::load(TEST_SCHEMA);
    schema.interop.add(parseMofFile(TAVQZ_SOURCE_DIR "/schema/interop/interop.mof"));
    return std::make_unique<InProcessServer>(
        std::move(schema), [](const std::string&) { return std::string(TEST_MODULE); });
}

void _write(int descriptor, const std::string& line) {
    const std::string text = line + "\n";
    [[maybe_unused]] const ssize_t written = write(descriptor, text.data(), text.size());
}

}  // namespace

ServedProcess::ServedProcess(const std::string& config) {
    const std::string file = _folder.write("serve.conf", "listen = 127.0.0.1:0\n" + config);
    int ends[2];
    EXPECT_EQ(0, pipe2(ends, O_CLOEXEC));
    _process = fork();
    if (_process == 0) {
        _serve(ends[1]);
    }
    close(ends[1]);
    std::string url;
    for (char c; read(ends[0], &c, 1) == 1 && c != '\n';) {
        url += c;
    }
    close(ends[0]);
    const auto parts = splitUrl(url);
    if (!parts) {
        siginfo_t ended{};
        waitid(P_PID, id_t(_process), &ended, WEXITED | WNOWAIT);
        ADD_FAILURE() << "it ended with " << ended.si_status << ": " << log();
        return;
    }
    _port = portOf(*parts, 0);
    if (parts->userInfo) {
        const std::size_t colon = parts->userInfo->find(':');
        _authorization = "Authorization: " +
                         basicAuthorization({parts->userInfo->substr(0, colon),
                                             parts->userInfo->substr(colon + 1)}) +
                         "\r\n";
    }
}

ServedProcess::~ServedProcess() {
    tell(SIGKILL);
    waitpid(_process, nullptr, 0);
}

void ServedProcess::_serve(int announced) const {
    const int log = open(_folder.file("log").c_str(), O_CREAT | O_WRONLY | O_APPEND, 0600);
    dup2(log, STDERR_FILENO);
    dup2(log, STDOUT_FILENO);
    setenv("TAVQZ_DATA_DIR", _folder.path().c_str(), 1);
    setenv("TEST_ENDLESS", "1", 1);
    setenv("TAVQZ_TEST_MODIFIED", _folder.file("asked").c_str(), 1);
    int status = EXIT_FAILED;
    try {
        status = serve({_folder.file("serve.conf"), {}}, _providers,
                       {[announced](const std::string& line) { _write(announced, line); },
                        [](const std::string& line) { _write(STDERR_FILENO, line); }});
    } catch (const std::exception& error) {
        _write(STDERR_FILENO, error.what());
    }
    _exit(status);
}

std::size_t ServedProcess::threads() const {
    const std::filesystem::directory_iterator tasks("/proc/" + std::to_string(_process) + "/task");
    return std::size_t(std::distance(begin(tasks), end(tasks)));
}

void ServedProcess::awaitProvider() const {
    siginfo_t ended{};
    while (_folder.read("asked").empty() && ended.si_pid == 0) {
        std::this_thread::yield();
        // Without taking its status, which the end of this object does.
        waitid(P_PID, id_t(_process), &ended, WEXITED | WNOHANG | WNOWAIT);
    }
    EXPECT_EQ(0, ended.si_pid) << "it ended with " << ended.si_status << ": " << log();
}
