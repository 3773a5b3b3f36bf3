// Settings files and what is read from them; true for every system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace support {

struct ProfileCase {
    std::string content;
    std::string_view section;
    std::string_view key;
    std::string value;
    bool onWine = true;  // false: Wine reads it in another way than Windows
};

inline std::vector<ProfileCase> profileCases() {
    using namespace std::string_literals;
    const std::string longValue(300, 'x');
    return {
        {"[Font]\r\nBarcodeHeight=0,3\r\n", "Font", "BarcodeHeight", "0,3"},
        {"[FONT]\nbarcodeHEIGHT=1\n", "font", "BarcodeHeight", "1"},
        {"[a]\rk=1\r[b]\rk=2", "b", "k", "2"},
        {" \t[a] \t\n \tk \t= \t1 2\t \n", "a", "k", "1 2"},
        {"[a]\nk=1\nK=2\n", "a", "k", "1"},
        {"[a]\nx=1\n[b]\nk=2\n[A]\nk=3\n", "a", "k", "Vorgabe", false},
        {"k=1\n[a]\nx=2\n", "a", "k", "Vorgabe"},
        {"[a]\n;k=1\n ; k=2\nk=3 ;4\n", "a", "k", "3 ;4"},
        {"[a]\nk\nk=1\n", "a", "k", "Vorgabe"},
        {"[a]\nk=\n", "a", "k", ""},
        {"[a]\nk==1=\n", "a", "k", "=1="},
        {"[a]\nk=\" 1 \"\n", "a", "k", " 1 "},
        {"[a]\nk='1'\n", "a", "k", "1"},
        {"[a]\nk=\"'1'\"\n", "a", "k", "'1'"},
        {"[a]\nk=\"1'\n", "a", "k", "\"1'"},
        {"[a]\nk=\"\n", "a", "k", "\""},
        {"[a]\nk=\"\"\n", "a", "k", ""},
        {"[a]\nk=\"1\" 2\n", "a", "k", "\"1\" 2"},
        {"[a\nk=1\n", "a", "k", "Vorgabe"},
        {"[a] x\nk=1\n", "a", "k", "1"},
        {"[ a ]\nk=1\n", "a", "k", "1"},
        {"[a]b]\nk=1\n", "a]b", "k", "1"},
        {"[a]\n[x=1\nk=2\n", "a", "k", "2"},
        {"[a]\n=1\n", "a", "", "1"},
        {"[a]\nk=" + longValue + "\n", "a", "k", longValue.substr(0, 254)},
        {"[a]\nk=\"" + longValue + "\"\n", "a", "k", longValue.substr(0, 254)},
        {"[a]\nk=1\0 2\nl=3\n"s, "a", "k", "1"},
        {"[a]\nk=1\0 2\nl=3\n"s, "a", "l", "3"},
        {"[a]\nk=1\x1A\nl=2\n", "a", "k", "1"},
        {"[a]\nk=1\n\x1A", "a", "k", "1"},
        {"[a]\n\x1Ak=1\n[b]\nk=2\n", "b", "k", "2"},
        {"\xEF\xBB\xBF[a]\nk=1\n", "a", "k", "1"},
        {"\xFF\xFE[\0a\0]\0\n\0k\0=\0\xFC\0\x3D\xD8\0\xDE\n\0"s, "a", "k", "ü😀"},
        {"[a]\nk=1", "a", "k", "1"},
        {"", "a", "k", "Vorgabe"},
    };
}

}  // namespace support
