#pragma once

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <typeinfo>

namespace Corvid {

// The name of a class as its declaration has it, without the namespace.
inline std::string ClassNameOf(const std::type_info& type) {
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Free> text(abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr));
    const std::string name = text != nullptr ? text.get() : type.name();
    const std::string scope = "Corvid::";
    return name.starts_with(scope) ? name.substr(scope.size()) : name;
}

} // namespace Corvid
