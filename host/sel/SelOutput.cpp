// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SelOutput.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "CsvText.h"
#include "Locale.h"
#include "Product.h"
#include "ResourceString.h"
#include "Text.h"
#include "TextTable.h"

namespace QZ {

using Json = nlohmann::ordered_json;

namespace {

// The catalogue's texts.
class Texts {
public:
    std::string of(const std::string& key) const {
        return key.empty() ? std::string() : make_string(_text(key).toString());
    }
    template <class Value>
    std::string of(const std::string& key, const Value& value) const {
        return make_string(_text(key).format(value));
    }

private:
    ResourceString _text(const std::string& key) const {
        return ResourceString(_library, make_wstring(key));
    }

    std::wstring _library = Product::getResourceLibrary("", Locale::getLanguageId());
};

std::string _time(const SelEvent& event, const Texts& texts) {
    return event.sinceStart ? texts.of("MSGID_SEL_SINCE_START", int(*event.sinceStart))
                            : event.time;
}

std::string _sensor(const SelEvent& event, const Texts& texts) {
    if (!event.sensor.empty() || !event.sensorNumber) {
        return event.sensor;
    }
    char number[8] = "";
    (void)std::snprintf(number, sizeof number, "#0x%02x", *event.sensorNumber);
    const std::string type = texts.of(event.sensorTypeKey);
    return type.empty() ? number : type + " " + number;
}

std::string _eventText(const SelEvent& event, const Texts& texts) {
    if (event.key.empty()) {
        return event.bytes;
    }
    const std::string text = texts.of(event.key);
    return event.isAsserted.value_or(true) ? text
                                           : texts.of("MSGID_SEL_DEASSERTED", make_wstring(text));
}

std::string _table(const std::vector<SelEvent>& events, const Texts& texts) {
    if (events.empty()) {
        return "The System Event Log is empty\n";
    }
    TextTable table({"Record", "Time", "Sensor", "Key", "Event"});
    for (const SelEvent& event : events) {
        table.addRow({std::to_string(event.record), _time(event, texts), _sensor(event, texts),
                      event.key, _eventText(event, texts)});
    }
    return table.toString();
}

template <class Value>
Json _valueOrNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

Json _textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json _element(const SelEvent& event, const Texts& texts) {
    return {{"record", event.record},
            {"type", event.type},
            {"time", _textOrNull(event.time)},
            {"sinceStart", _valueOrNull(event.sinceStart)},
            {"sensor", _textOrNull(event.sensor)},
            {"sensorNumber", _valueOrNull(event.sensorNumber)},
            {"sensorType", _textOrNull(event.sensorTypeKey)},
            {"key", _textOrNull(event.key)},
            {"text", _textOrNull(texts.of(event.key))},
            {"asserted", _valueOrNull(event.isAsserted)},
            {"bytes", event.bytes}};
}

std::string _cell(const Json& value) {
    if (value.is_null()) {
        return {};
    }
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// The elements as an array, or as lines below a line of their names.
std::string _write(const std::vector<Json>& elements, const std::vector<std::string>& columns,
                   const std::string& format) {
    if (format == "json") {
        return Json(elements).dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    }
    std::string text = csvLine(columns);
    for (const Json& element : elements) {
        std::vector<std::string> cells;
        cells.reserve(columns.size());
        for (const std::string& column : columns) {
            cells.push_back(_cell(element[column]));
        }
        text += csvLine(cells);
    }
    return text;
}

}  // namespace

std::string selText(const std::vector<SelEvent>& events, const std::string& format) {
    const Texts texts;
    if (format != "json" && format != "csv") {
        return _table(events, texts);
    }
    std::vector<Json> elements;
    elements.reserve(events.size());
    for (const SelEvent& event : events) {
        elements.push_back(_element(event, texts));
    }
    return _write(elements,
                  {"record", "type", "time", "sinceStart", "sensor", "sensorNumber", "sensorType",
                   "key", "text", "asserted", "bytes"},
                  format);
}

std::string selBytes(const std::vector<SelEvent>& events, const std::string& format) {
    std::string lines;
    std::vector<Json> elements;
    for (const SelEvent& event : events) {
        lines.append(event.bytes).append("\n");
        elements.push_back({{"record", event.record}, {"bytes", event.bytes}});
    }
    return format == "json" || format == "csv" ? _write(elements, {"record", "bytes"}, format)
                                               : lines;
}

}  // namespace QZ
