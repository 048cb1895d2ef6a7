// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "AssetRecord.h"
#include "SmBios.h"

namespace QZ {

// Who owns this machine, where it stands and what it is called: the fields that people write,
// kept in "asset.dat" (see `AssetRecord` for their life), and what the machine's own firmware
// and clock say, which is read and never kept.
class ComputerSystemDetails : public AssetRecord {
public:
    // (label, data); a record that was just loaded holds exactly five.
    using PersonalizedData = std::vector<std::pair<std::string, std::string>>;

    // Throws `Error` where the file's lock cannot be had; a missing file, and a machine without
    // SMBIOS, read as empty.
    ComputerSystemDetails();
    // Saves every field and the first five pairs; where there are fewer, the others keep what
    // the file holds for them. Throws `Error` where that fails.
    ~ComputerSystemDetails() noexcept(false);  // NOLINT(bugprone-exception-escape)

    std::string getAssetNumber() const { return _assetNumber; }
    void setAssetNumber(std::string text) { _assetNumber = std::move(text); }
    std::string getAssetIdTag() const { return _assetIdTag; }
    void setAssetIdTag(std::string text) { _assetIdTag = std::move(text); }
    std::string getOwnerName() const { return _ownerName; }
    void setOwnerName(std::string text) { _ownerName = std::move(text); }
    std::string getOwnerPhone() const { return _ownerPhone; }
    void setOwnerPhone(std::string text) { _ownerPhone = std::move(text); }
    std::string getOwnerPosition() const { return _ownerPosition; }
    void setOwnerPosition(std::string text) { _ownerPosition = std::move(text); }
    std::string getOwnerDepartment() const { return _ownerDepartment; }
    void setOwnerDepartment(std::string text) { _ownerDepartment = std::move(text); }
    DateTime getLastInventoried() const { return _lastInventoried; }
    void setLastInventoried(DateTime date) { _lastInventoried = date; }
    DateTime getSystemPurchaseDate() const { return _systemPurchaseDate; }
    void setSystemPurchaseDate(DateTime date) { _systemPurchaseDate = date; }
    std::string getSystemLocation() const { return _systemLocation; }
    void setSystemLocation(std::string text) { _systemLocation = std::move(text); }
    std::string getKELPProfile() const { return _kelpProfile; }
    void setKELPProfile(std::string text) { _kelpProfile = std::move(text); }
    DateTime getKELPUpdateTime() const { return _kelpUpdateTime; }
    void setKELPUpdateTime(DateTime date) { _kelpUpdateTime = date; }
    PersonalizedData getPersonalizedData() const { return _personalizedData; }
    void setPersonalizedData(PersonalizedData pairs) { _personalizedData = std::move(pairs); }

    // The deployment profile and its time are other names of the KELP fields, on purpose.
    std::string getDeploymentProfile() const { return _kelpProfile; }
    void setDeploymentProfile(std::string text) { _kelpProfile = std::move(text); }
    DateTime getDeploymentUpdateTime() const { return _kelpUpdateTime; }
    void setDeploymentUpdateTime(DateTime date) { _kelpUpdateTime = date; }

    // Size of the asset-ID string area that is reported, in bytes.
    unsigned int getAssetIdStringAreaSize() const { return 1024; }

    // The machine's clock, as local time.
    DateTime getDateTime() const;
    // Sets the machine's clock, in whole seconds. Does nothing for the unset date, for a year
    // beyond 2037 (what a 32-bit count of seconds can hold) and where the records are those of
    // another machine. Throws `Error` where the clock may not be set.
    void setDateTime(DateTime time);

    std::wstring getSystemName() const;

    // From the first System Information structure (SMBIOS type 1); empty where there is none.
    std::string getSystemSerialNumber() const;
    std::string getSystemModelNumber() const;
    std::string getSystemModelName() const;
    std::string getProductName() const;
    // As text in the order in which SMBIOS holds the bytes; where it holds none, the UUID that a
    // Xen guest has from its hypervisor.
    std::string getSystemUuid() const;

private:
    static const RecordField<ComputerSystemDetails> _fields[11];

    const SmBios::Table* _systemInformation() const;

    std::string _assetNumber;
    std::string _assetIdTag;
    std::string _ownerName;
    std::string _ownerPhone;
    std::string _ownerPosition;
    std::string _ownerDepartment;
    DateTime _lastInventoried;
    DateTime _systemPurchaseDate;
    std::string _systemLocation;
    std::string _kelpProfile;
    DateTime _kelpUpdateTime;
    PersonalizedData _personalizedData;
    SmBios _smBios;
};

}  // namespace QZ
