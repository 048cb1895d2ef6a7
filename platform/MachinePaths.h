// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// Every path into the machine. The machine's own files lie under "/", unless the environment's
// TAVQZ_HOST_ROOT names a folder that is laid out as another machine is. The environment is read
// afresh at each call, and ignored in a process with raised privileges (secure_getenv).
class MachinePaths {
public:
    // True while TAVQZ_HOST_ROOT names a folder other than "/".
    static bool isOtherMachine();

    // What stands before every path of the machine's own files: that folder, without a last slash;
    // empty for "/".
    static std::string root();

    // The SMBIOS entry point and structure table, as the kernel shows them.
    static std::string smbiosEntryPoint();
    static std::string smbiosTable();

    static std::string machineId();

    // The host name as configured. This machine's own name is asked of the kernel instead.
    static std::string hostName();

    static std::string hypervisorType();
    static std::string hypervisorUuid();
    static std::string cpuInfo();

    // Where a kernel that has a driver of IDE tells of its drives.
    static std::string ideFolder();
    // Of the drives "hda", "hdb" … and the disks "sda", "sdb" …, by their last letter.
    static std::string ideIdentify(char drive);
    static std::string scsiDisk(char disk);

    // The management controller, and the file of its recorded replies on another machine.
    static std::string managementController();
    static std::string managementControllerReplies();

    static std::string xServerConfiguration();

    // The kernel's folders of block devices, of SCSI hosts and what answers behind them, and of
    // those that are volumes of a RAID.
    static std::string blockDevices();
    static std::string scsiHosts();
    static std::string scsiDevices();
    static std::string raidVolumes();

    // The list of the names of PCI boards.
    static std::string pciNames();

    // What an OpenPegasus server keeps, where it is not told of another folder.
    static std::string cimRepository();

    // What the simulated service-processor library reads, on the machine or on the one whose files
    // lie below another folder.
    static std::string simulatedServiceProcessors(const std::string& below = root());

    // The folder of our data files, ending in "/": TAVQZ_DATA_DIR, else the system's. Never under
    // TAVQZ_HOST_ROOT.
    static std::string dataDirectory();

    // The folder of the message catalogues: share/tavqz/messages beside the code that runs, in the
    // nearest folder above it that has one, else the system's. Never under TAVQZ_HOST_ROOT.
    static std::string messageFolder();

    // printf format of a run-time library's path, from its file name. Relative to the working
    // folder, never to TAVQZ_HOST_ROOT.
    static const char* libraryFormat();
};

}  // namespace QZ
