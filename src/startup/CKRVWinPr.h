// The public class of the program as an automation server.
#pragma once

#include <string>

namespace startup {

// For programs that start this one as a server instead of with a command line. The start as a server is not offered:
// the program is always started by itself, and the class has nothing to do.
class CKRVWinPr {
public:
    // Does nothing.
    void Run(const std::string& /*sFirst*/, const std::string& /*sSecond*/, const std::string& /*sThird*/,
             const std::string& /*sFourth*/, const std::string& /*sFifth*/) {}
};

}  // namespace startup
