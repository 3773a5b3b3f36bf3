// What is looked at before a parser sees an XML file, whichever it is: nobody knows what each version of each parser
// makes of a file that was made to harm it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace settings {

inline constexpr std::size_t largestXmlFile = std::size_t{1} << 20;  // bytes
inline constexpr const char* tooLargeForXml = "Die Datei ist größer als 1 MiB";

// Why a parser must not see the content, in German; empty where it may. Refused are
// - files larger than that, elements within elements, or attributes of one element, far beyond any file of settings,
// - type declarations that name a file or declare entities (ELEMENT and ATTLIST may stand there, of limited size: each
//   element is given the defaults from there, and content models may cost a parser much),
// - whatever keeps this from being seen: an encoding other than UTF-8, UTF-16 with its mark, windows-1252, ISO-8859-1
//   and US-ASCII, or one that the bytes are not of.
// What is not well-formed in any other way is the parser's to say; up to there it reads what was read here.
std::string xmlRefusal(std::string_view content);

}  // namespace settings
