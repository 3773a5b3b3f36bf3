#include "messenger/host_program.h"

#include "dos/krvwinpr_com.h"

namespace messenger {

std::string_view hostProgram() {
    return {reinterpret_cast<const char*>(dos::krvwinprCom.data()), dos::krvwinprCom.size()};
}

}  // namespace messenger
