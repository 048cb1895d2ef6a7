// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

#include "BuildPaths.h"
#include "MessageCatalogue.h"
#include "tavqz/SystemEventRecord.h"

using namespace QZ;

namespace {

constexpr const char* _folder = TAVQZ_BINARY_DIR "/share/tavqz/messages";
constexpr const char* _languages[] = {"root", "de", "fr", "es", "ja", "zh_Hans"};

void _insert(std::set<std::string>& keys, const std::string& key) {
    if (key.find_first_not_of(' ') != std::string::npos)
        keys.insert(key);
}

// Every key that any event has: codes are bytes, and an offset has four bits.
std::set<std::string> _eventKeys() {
    constexpr std::uint32_t specific = 111;
    std::set<std::string> keys;
    for (std::uint32_t code = 0; code < 256; ++code) {
        for (std::uint32_t offset = 0; offset < 16; ++offset) {
            ipmiEvent generic{};
            generic.eventReadingType = code;
            generic.eventOffset = offset;
            ipmiEvent own = generic;
            own.eventReadingType = specific;
            own.sensorType = code;
            _insert(keys, SystemEventRecord(&generic).getEventString());
            _insert(keys, SystemEventRecord(&own).getEventString());
            _insert(keys, SystemEventRecord(&generic).getEventReadingCodeString());
            _insert(keys, SystemEventRecord(&own).getSensorTypeCodeString());
        }
    }
    return keys;
}

}  // namespace

TEST(EventText, StandsInEveryLanguageForEveryKey) {
    const std::set<std::string> keys = _eventKeys();
    EXPECT_EQ(267U, keys.size());
    for (const char* language : _languages) {
        const MessageCatalogue catalogue(_folder, language);
        for (const std::string& key : keys)
            EXPECT_NE(L"", catalogue.find(key).value_or(L"")) << language << " " << key;
    }
}

TEST(EventText, StandsForNoKeyThatNoEventHas) {
    const std::set<std::string> keys = _eventKeys();
    for (const std::string& key : MessageCatalogue(_folder, "root").keys()) {
        const bool isOfEvents = key.rfind("IPMI_", 0) == 0 && key != "IPMI_ABBREV";
        EXPECT_EQ(isOfEvents, keys.count(key) == 1) << key;
    }
}

TEST(EventText, IsTranslated) {
    const MessageCatalogue english(_folder, "root");
    for (const char* language : {"de", "fr", "es", "ja", "zh_Hans"}) {
        const MessageCatalogue catalogue(_folder, language);
        unsigned same = 0;  // names of standards and of signals
        for (const std::string& key : _eventKeys())
            same += catalogue.find(key) == english.find(key) ? 1 : 0;
        EXPECT_GE(15U, same) << language;
    }
}

// What two events of one sensor are called tells them apart.
TEST(EventText, TellsEventsOfASensorApart) {
    for (const char* language : _languages) {
        const MessageCatalogue catalogue(_folder, language);
        std::set<std::pair<std::string, std::wstring>> texts;
        unsigned count = 0;
        for (const std::string& key : _eventKeys()) {
            if (key.rfind("IPMI_EVENT_", 0) != 0)
                continue;
            const std::string group = key.substr(0, key.find('_', sizeof "IPMI_EVENT_STC_" - 1));
            texts.insert({group, catalogue.find(key).value_or(L"")});
            ++count;
        }
        EXPECT_EQ(count, texts.size()) << language;
    }
}
