// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMValue.h>

#include <charconv>
#include <type_traits>

#include "CIMValueRep.h"

// CIMValue as text, the same in every locale.

namespace Pegasus {

namespace {

class _Printer {
public:
    explicit _Printer(String& text) : _text(text) {}

    void operator()(std::monostate) const {}
    void operator()(Boolean x) const { _text.append(x ? "TRUE" : "FALSE"); }
    void operator()(const Char16& x) const { _text.append(x); }
    void operator()(const String& x) const { _text.append(x); }
    void operator()(const CIMDateTime& x) const { _text.append(x.toString()); }
    void operator()(const CIMObjectPath& x) const { _text.append(x.toString()); }
    // By name: what is inside has no text form of its own.
    void operator()(const CIMObject& x) const { _text.append(x.getPath().toString()); }
    void operator()(const CIMInstance& x) const { _text.append(x.getPath().toString()); }

    template <class T, std::enable_if_t<std::is_arithmetic_v<T>, int> = 0>
    void operator()(T x) const {
        char text[32];
        std::to_chars_result end{};
        // 17 digits tell any two numbers of 64 bits apart; those of 32 bits look alike for that.
        if constexpr (std::is_floating_point_v<T>)
            end = std::to_chars(text, text + sizeof text, Real64(x), std::chars_format::scientific,
                                16);
        else
            end = std::to_chars(text, text + sizeof text, x);
        _text.append(String(text, static_cast<Uint32>(end.ptr - text)));
    }

    template <class T>
    void operator()(const Array<T>& x) const {
        for (Uint32 i = 0; i < x.size(); ++i) {
            (*this)(x[i]);
            _text.append(' ');
        }
    }

private:
    String& _text;
};

}  // namespace

String CIMValue::toString() const {
    String text;
    if (_rep)
        std::visit(_Printer(text), _rep->data);
    return text;
}

}  // namespace Pegasus
