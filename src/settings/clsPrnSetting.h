// A printer's settings as a file of printer settings has them: one printer of one computer.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace settings {

// Texts as they stand in the file; what is not there is empty.
class clsPrnSetting {
public:
    const std::string& Computername() const { return values_[computername]; }
    void Computername(std::string_view value) { values_[computername] = value; }
    const std::string& Printername() const { return values_[printername]; }
    void Printername(std::string_view value) { values_[printername] = value; }
    const std::string& LinkerRand() const { return values_[linkerRand]; }
    void LinkerRand(std::string_view value) { values_[linkerRand] = value; }
    const std::string& Zeilenabstand() const { return values_[zeilenabstand]; }
    void Zeilenabstand(std::string_view value) { values_[zeilenabstand] = value; }
    // What is stored under the name "ObererRand" elsewhere.
    const std::string& Kopfabstand() const { return values_[kopfabstand]; }
    void Kopfabstand(std::string_view value) { values_[kopfabstand] = value; }
    const std::string& ColorMode() const { return values_[colorMode]; }
    void ColorMode(std::string_view value) { values_[colorMode] = value; }
    const std::string& Schacht1() const { return values_[schacht1]; }
    void Schacht1(std::string_view value) { values_[schacht1] = value; }
    const std::string& Schacht2() const { return values_[schacht2]; }
    void Schacht2(std::string_view value) { values_[schacht2] = value; }
    const std::string& Schacht3() const { return values_[schacht3]; }
    void Schacht3(std::string_view value) { values_[schacht3] = value; }

    // Sets the property of that name, in exactly that case; without effect where there is none.
    void set(std::string_view property, std::string_view value);

private:
    enum Property : std::size_t {
        computername,
        printername,
        linkerRand,
        zeilenabstand,
        kopfabstand,
        colorMode,
        schacht1,
        schacht2,
        schacht3,
        propertyCount
    };
    static constexpr std::array<std::string_view, propertyCount> names = {"Computername",  "Printername", "LinkerRand",
                                                                          "Zeilenabstand", "Kopfabstand", "ColorMode",
                                                                          "Schacht1",      "Schacht2",    "Schacht3"};

    std::array<std::string, propertyCount> values_;
};

}  // namespace settings
