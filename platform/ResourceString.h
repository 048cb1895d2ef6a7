// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// One text of the product's message catalogues, read when it is made. A value.
//
// A text may have insertions, which wide printf formats: "%ls" for texts, "%d" for numbers, "%%"
// for a percent sign; or by their positions, "%1$ls". A translation whose insertions are not the
// ones of the English text is not used, so that no catalogue can lead format() astray.
class ResourceString {
public:
    // The library is Product::getResourceLibrary()'s. A key that its language lacks has the
    // English text; a key that is nowhere, also because the catalogues are missing, is itself the
    // text. Never throws for what it finds on disk.
    ResourceString(const std::wstring& library, const std::wstring& key);

    // As the catalogue has it.
    const std::wstring& toString() const { return _text; }

    // The text with these values, each a std::wstring or an int, cut at MaximumLength characters.
    // The bare text where its insertions are others than these.
    template <class... Values>
    std::wstring format(const Values&... values) const {
        const std::string signature = {_type(values)...};
        return _takes(signature) ? _print(_text.c_str(), _argument(values)...) : _text;
    }

    static constexpr int MaximumLength = 511;

private:
    static char _type(const std::wstring&) { return 's'; }
    static char _type(const int&) { return 'd'; }
    static const wchar_t* _argument(const std::wstring& value) { return value.c_str(); }
    static int _argument(const int& value) { return value; }

    bool _takes(const std::string& signature) const;
    static std::wstring _print(const wchar_t* format, ...);

    std::wstring _text;
};

}  // namespace QZ
