// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CommandSyntax.h"

#include "AccessCommandLine.h"
#include "RegisterOptions.h"

namespace QZ {

namespace {

constexpr const char* _setFooter =
    R"(A path names the instance where a class has several.
Values: numbers in decimal; true or false; dates as 2027-01-31, in ISO 8601 with
a time, or in the 25-character CIM form. An empty value clears a date or a text.
Writes nothing on success.

Examples:
  tavqz set TAVIRA_Lease EndDate=2027-01-31 Lessor="Acme" Buyout=1200
  tavqz set TAVIRA_Warranty EndDate=)";

CLI::App* _addCommand(CLI::App& app, Request& request, Request::Command command, const char* name,
                      const char* description, const char* example) {
    CLI::App* added = app.add_subcommand(name, description);
    added->fallthrough();
    added->footer(std::string("Example:\n  tavqz ") + example +
                  "\n\nThe options of \"tavqz --help\" may stand behind the command too.");
    added->parse_complete_callback([&request, command] { request.command = command; });
    return added;
}

void _addServe(CLI::App& app, Request& request) {
    CLI::App* added =
        _addCommand(app, request, Request::Serve, "serve",
                    "Answer CIM clients over HTTP until it is told to stop", "serve --port 0");
    addServeOptions(*added, request.serve);
}

void _addWatch(CLI::App& app, Request& request) {
    CLI::App* added = _addCommand(app, request, Request::Watch, "watch",
                                  "Write each alert as it arrives, until it is told to stop", "");
    WatchRequest& watch = request.watch;
    added->add_option("--count", watch.count, "End after so many alerts")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000000));
    added
        ->add_option("--exec", watch.command,
                     "A shell command to run for each alert, with its fields in the environment")
        ->type_name("CMD");
    added->footer(
        R"(The command finds TAVQZ_ALERT_DESCRIPTION, TAVQZ_ALERT_SEVERITY (a number, 2 for
information) and others, see the manual, in its environment.

Examples:
  tavqz watch --format json
  tavqz watch --exec 'logger -t tavqz "$TAVQZ_ALERT_DESCRIPTION"')");
}

// One of the commands of "fru".
CLI::App* _addFruAction(CLI::App& fru, Request& request, FruRequest::Action action,
                        const char* name, const char* description, const char* example) {
    CLI::App* added = _addCommand(fru, request, Request::Fru, name, description, example);
    added->parse_complete_callback([&request, action] {
        request.command = Request::Fru;
        request.fru.action = action;
    });
    return added;
}

void _addFru(CLI::App& app, Request& request) {
    CLI::App* fru = app.add_subcommand("fru", "Keep a record of replaceable units");
    fru->require_subcommand(1);
    fru->fallthrough();
    fru->footer(R"(Examples:
  tavqz fru list
  tavqz fru add FRUNumber=39M4 IdentifyingNumber=7 Vendor=Acme Name=Fan
  tavqz fru edit 39M4 Name="Fan, left"
  tavqz fru import units.csv --dry-run)");
    const char* const unit = "The unit's FRU number, or its path where several have that";
    _addFruAction(*fru, request, FruRequest::List, "list",
                  "Write all units, and which are recorded", "fru list --format csv");
    _addFruAction(*fru, request, FruRequest::Add, "add", "Record a unit, and write its path",
                  "fru add FRUNumber=39M4 IdentifyingNumber=7 Vendor=Acme Name=Fan")
        ->add_option("Property=value", request.assignments, "The properties, keys included")
        ->required();
    CLI::App* edit = _addFruAction(*fru, request, FruRequest::Edit, "edit",
                                   "Change a recorded unit", "fru edit 39M4 Name=Fan");
    edit->add_option("UNIT", request.subject, unit)->required();
    edit->add_option("Property=value", request.assignments, "The properties and their new values")
        ->required();
    _addFruAction(*fru, request, FruRequest::Remove, "remove", "Forget a recorded unit",
                  "fru remove 39M4")
        ->add_option("UNIT", request.subject, unit)
        ->required();
    _addFruAction(*fru, request, FruRequest::Export, "export",
                  "Write the recorded units as CSV, for spreadsheets", "fru export >units.csv");
    CLI::App* import = _addFruAction(*fru, request, FruRequest::Import, "import",
                                     "Record the units of a CSV file, and write what changed",
                                     "fru import units.csv --dry-run");
    import
        ->add_option("FILE", request.fru.file, "The file, with the columns that \"export\" writes")
        ->required();
    import->add_flag("--dry-run", request.fru.isDryRun, "Only write what would change");
}

void _addReport(CLI::App& app, Request& request) {
    _addCommand(app, request, Request::Report, "report",
                "Lay out everything the machine answers, for people", "report");
}

void _addList(CLI::App& app, Request& request) {
    _addCommand(app, request, Request::List, "list", "Write the instances of a class",
                "list TAVIRA_SerialNumberInformation --format csv")
        ->add_option("CLASS", request.subject, "The class")
        ->required();
}

void _addNames(CLI::App& app, Request& request) {
    _addCommand(app, request, Request::Names, "names", "Write the paths of a class's instances",
                "names TAVIRA_Lease")
        ->add_option("CLASS", request.subject, "The class")
        ->required();
}

void _addGet(CLI::App& app, Request& request) {
    _addCommand(app, request, Request::Get, "get", "Write one instance",
                "get 'TAVIRA_Lease.Identifier=\"TAVIRA|CorvanaAgent|Lease\"'")
        ->add_option("PATH", request.subject, "The instance's path, as \"names\" writes it")
        ->required();
}

void _addSet(CLI::App& app, Request& request) {
    CLI::App* set =
        _addCommand(app, request, Request::Set, "set", "Change properties of an instance", "");
    set->footer(_setFooter);
    set->add_option("CLASS|PATH", request.subject,
                    "The class that has one instance, or the instance's path")
        ->required();
    set->add_option("Property=value", request.assignments, "The properties and their new values")
        ->required();
}

void _addCreate(CLI::App& app, Request& request) {
    CLI::App* create = _addCommand(
        app, request, Request::Create, "create", "Make an instance of a class, and write its path",
        "create TAVIRA_FRU FRUNumber=39M4 IdentifyingNumber=7 Vendor=Acme");
    create->add_option("CLASS", request.subject, "The class")->required();
    create->add_option("Property=value", request.assignments, "The properties, keys included")
        ->required();
}

void _addDelete(CLI::App& app, Request& request) {
    _addCommand(app, request, Request::Delete, "delete", "Delete an instance",
                "delete 'TAVIRA_FRU.FRUNumber=\"39M4\",IdentifyingNumber=\"7\",Vendor=\"Acme\"'")
        ->add_option("PATH", request.subject, "The instance's path, as \"names\" writes it")
        ->required();
}

void _addClasses(CLI::App& app, Request& request) {
    _addCommand(app, request, Request::Classes, "classes", "Write the classes of the model",
                "classes --format json");
}

void _addCapture(CLI::App& app, Request& request) {
    CLI::App* capture =
        _addCommand(app, request, Request::Capture, "capture",
                    "Record this machine in a folder, for --root", "capture DIR --sanitize");
    capture->add_option("DIR", request.subject, "The folder, which must be missing or empty")
        ->required();
    capture->add_flag("--sanitize", request.isSanitized,
                      "Replace serial numbers, UUIDs and names by others");
}

void _addDue(CLI::App& app, Request& request) {
    CLI::App* due = _addCommand(app, request, Request::Due, "due", "Write what runs out soon",
                                "due --within 90d");
    due->add_option("--within", request.within, "How soon, in days")
        ->type_name("DAYS")
        ->capture_default_str();
    due->footer(
        "Exit status, as monitoring plug-ins end: 0 nothing is due, 1 something runs out\n"
        "within the days, 2 something has run out, 3 that could not be found out.\n\n"
        "Example:\n  tavqz due --within 90d");
}

void _addSel(CLI::App& app, Request& request) {
    _addCommand(app, request, Request::Sel, "sel",
                "Write the System Event Log of the machine's management controller", "sel")
        ->add_flag("--raw", request.isRaw, "Only write the bytes of each record");
}

void _addPasswd(CLI::App& app, Request& request) {
    addPasswdOptions(*_addCommand(app, request, Request::Passwd, "passwd",
                                  "Keep the users of a server's credentials file", ""),
                     request.passwd);
}

void _addRegister(CLI::App& app, Request& request) {
    addRegisterOptions(*_addCommand(app, request, Request::Register, "register",
                                    REGISTER_DESCRIPTION, "register --dry-run"),
                       request.registration);
}

}  // namespace

const std::vector<CommandSyntax>& commandSyntaxes() {
    static const std::vector<CommandSyntax> syntaxes = {
        {"report", _addReport},     {"list", _addList},       {"names", _addNames},
        {"get", _addGet},           {"set", _addSet},         {"create", _addCreate},
        {"delete", _addDelete},     {"classes", _addClasses}, {"capture", _addCapture},
        {"due", _addDue},           {"fru", _addFru},         {"sel", _addSel},
        {"watch", _addWatch},       {"passwd", _addPasswd},   {"serve", _addServe},
        {"register", _addRegister},
    };
    return syntaxes;
}

}  // namespace QZ
