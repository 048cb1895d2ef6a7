// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Readiness.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "Descriptor.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

// The service manager's side.
class Manager {
public:
    explicit Manager(const std::string& name) : _socket(socket(AF_UNIX, SOCK_DGRAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, name.data(), name.size());
        const bool isAbstract = name[0] == '@';
        address.sun_path[0] = isAbstract ? '\0' : name[0];
        _isBound = bind(_socket.get(), reinterpret_cast<const sockaddr*>(&address),
                        socklen_t(offsetof(sockaddr_un, sun_path) + name.size())) == 0;
    }

    // What was told next; "nothing" where nothing was.
    std::string told() const {
        char text[256];
        const ssize_t size = recv(_socket.get(), text, sizeof text, MSG_DONTWAIT);
        return !_isBound  ? "not bound"
               : size < 0 ? "nothing"
                          : std::string(text, std::size_t(size));
    }

private:
    Descriptor _socket;
    bool _isBound;
};

TEST(Readiness, TellsTheServiceManager) {
    const TemporaryFolder folder;
    for (const std::string& name : {folder.file("notify"), "@" + folder.path()}) {
        const ScopedEnvironment variable("NOTIFY_SOCKET", name.c_str());
        const Manager manager(name);
        const Readiness readiness;
        EXPECT_EQ("nothing", manager.told());
        readiness.ready();
        EXPECT_EQ("READY=1", manager.told());
        readiness.reloading();
        EXPECT_THAT(manager.told(),
                    testing::MatchesRegex("RELOADING=1\nMONOTONIC_USEC=[1-9][0-9]*"));
        readiness.stopping();
        EXPECT_EQ("STOPPING=1", manager.told());
        EXPECT_EQ("nothing", manager.told());
    }
}

TEST(Readiness, IsNoChildsToTell) {
    const ScopedEnvironment variable("NOTIFY_SOCKET", "/nowhere");
    const Readiness readiness;
    EXPECT_EQ(nullptr, std::getenv("NOTIFY_SOCKET"));
    readiness.ready();  // nobody listens, which nobody minds
}

TEST(Readiness, IsForNobodyWhereNobodyWantsToKnow) {
    const ScopedEnvironment variable("NOTIFY_SOCKET", nullptr);
    Readiness().ready();
    const ScopedEnvironment tooLong("NOTIFY_SOCKET", std::string(200, 'a').c_str());
    Readiness().ready();
}

}  // namespace
}  // namespace QZ
