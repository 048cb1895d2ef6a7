// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MessageInsertions.h"

namespace QZ {

namespace {

constexpr std::size_t MaximumPosition = 9;

class InsertionReader {
public:
    explicit InsertionReader(const std::wstring& text) : _text(text) {}

    std::optional<std::string> read() {
        while ((_at = _text.find(L'%', _at)) != std::wstring::npos) {
            ++_at;
            if (!_take(L"%") && !_readInsertion())
                return std::nullopt;
        }
        const bool isComplete = _types.find('\0') == std::string::npos;
        return isComplete && !(_hasPositions && _hasNone) ? std::optional(_types) : std::nullopt;
    }

private:
    bool _take(const wchar_t* expected) {
        const std::wstring word(expected);
        if (_text.compare(_at, word.size(), word) != 0)
            return false;
        _at += word.size();
        return true;
    }

    bool _readInsertion() {
        std::size_t position = _readPosition();
        const bool isNamed = position != 0;
        (isNamed ? _hasPositions : _hasNone) = true;
        if (!isNamed)
            position = ++_taken;
        char type = 0;
        if (_take(L"ls"))
            type = 's';
        else if (_take(L"d"))
            type = 'd';
        return type != 0 && _note(position, type);
    }

    // One digit and "$"; 0 where there is none.
    std::size_t _readPosition() {
        if (_at + 1 >= _text.size() || _text[_at + 1] != L'$' || _text[_at] < L'1' ||
            _text[_at] > L'9')
            return 0;
        const auto position = static_cast<std::size_t>(_text[_at] - L'0');
        _at += 2;
        return position;
    }

    bool _note(std::size_t position, char type) {
        if (position > MaximumPosition)
            return false;
        if (_types.size() < position)
            _types.resize(position, '\0');
        char& noted = _types[position - 1];
        if (noted != '\0' && noted != type)
            return false;
        noted = type;
        return true;
    }

    const std::wstring& _text;
    std::size_t _at = 0;
    std::size_t _taken = 0;
    std::string _types;
    bool _hasPositions = false;
    bool _hasNone = false;
};

}  // namespace

std::optional<std::string> messageInsertions(const std::wstring& text) {
    return InsertionReader(text).read();
}

}  // namespace QZ
