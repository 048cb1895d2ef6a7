// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Error.h"
#include "RegisterRequest.h"
#include "ServeRequest.h"

namespace QZ {

// The command's exit status, which scripts may rely on.
enum ExitStatus {
    EXIT_OK = 0,
    EXIT_FAILED = 1,     // the module, the server or standard output failed
    EXIT_USAGE = 2,      // what was asked for makes no sense
    EXIT_NOT_FOUND = 3,  // there is no such instance, or no event log
    EXIT_UNKNOWN = 3,    // of "due", whatever went wrong: 1 and 2 are its findings
};

// What was asked for makes no sense; the message says what would.
class UsageError : public Error {
public:
    using Error::Error;
};

// What "passwd" is told.
struct PasswdRequest {
    std::string user;
    std::string file;    // empty: the one in the data folder
    std::string rights;  // with commas; empty: what they are
    bool isDeletion = false;
};

// What "watch" is told.
struct WatchRequest {
    unsigned count = 0;   // of alerts to end after; 0: never
    std::string command;  // that each alert is handed to; empty: none
};

// What "fru" is told.
struct FruRequest {
    enum Action { List, Add, Edit, Remove, Export, Import };

    Action action = List;
    std::string file;  // of Import; absolute, for the working folder may be another then
    bool isDryRun = false;
};

// What the arguments ask for.
struct Request {
    enum Command {
        Report,
        List,
        Names,
        Get,
        Set,
        Create,
        Delete,
        Classes,
        Capture,
        Due,
        Fru,
        Sel,
        Watch,
        Passwd,
        Serve,
        Register
    };

    Command command = Report;
    std::string subject;                   // a class, a path, a unit or a folder
    std::vector<std::string> assignments;  // of those that write, each "Property=value"
    bool isSanitized = false;              // of "capture"
    std::string within = "90d";            // of "due"
    bool isRaw = false;                    // of "sel"
    FruRequest fru;
    PasswdRequest passwd;
    ServeArguments serve;
    WatchRequest watch;
    RegisterRequest registration;
    std::string format = "table";
    std::string server;  // its URL, empty where this process asks the module
    // Of https: a file of certificates, absolute, empty for the system's; and whether any will do.
    std::string authorityFile;
    bool acceptsAnyCertificate = false;
    std::string root;  // each empty where it is not given, and as it was written
    std::string dataFolder;
    std::string moduleFile;
    std::string schemaFolder;
};

// What became of the arguments: a request to carry out, or a text to print and a status to end
// with.
struct ParsedArguments {
    bool isRequest = false;
    Request request;
    std::string text;
    ExitStatus status =
        EXIT_OK;  // EXIT_OK: the text is for standard output, else for standard error
};

// Reads the arguments, the first of which is the program's name. Global options may stand anywhere.
//
// What they leave open the environment may say: TAVQZ_SERVER where none of the options is given
// that choose a machine, TAVQZ_HOST_ROOT and TAVQZ_DATA_DIR where no server is asked.
ParsedArguments parseArguments(int count, const char* const* arguments);

}  // namespace QZ
