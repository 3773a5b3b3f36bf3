#include "platform/crash/termination.h"

#include <exception>
#include <typeinfo>

#include "runtime/error.h"

namespace platform::crash {

std::int32_t describeTermination(FixedText& text) noexcept {
    if (std::current_exception() == nullptr) {
        text << "Ende des Programms ohne Ausnahme (std::terminate)";
        return runtime::errInternal;
    }
    text << "Ausnahme, die niemand behandelt: ";
    try {
        throw;
    } catch (const runtime::Error& error) {
        text << error.message();
        return error.number();
    } catch (const std::exception& error) {
        text << error.what() << " (" << typeid(error).name() << ")";
    } catch (...) {
        text << "von unbekannter Art";
    }
    return runtime::errInternal;
}

}  // namespace platform::crash
