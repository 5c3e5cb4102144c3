#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace Corvid {

// The JSON library is known here alone. Members stay in the order in which they were added.
using Json = nlohmann::ordered_json;

// Ill-formed UTF-8, as paths may be, is written as U+FFFD.
inline std::string JsonText(const Json& json, int indent = -1) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

// One line of what machines read.
inline std::string JsonLine(const Json& json) {
    return JsonText(json) + "\n";
}

// Adds a member without looking whether it is there: linear for objects with many.
inline Json& AppendMember(Json& object, std::string name, Json value) {
    auto& members = static_cast<Json::object_t::Container&>(object.get_ref<Json::object_t&>());
    members.emplace_back(std::move(name), std::move(value));
    return members.back().second;
}

} // namespace Corvid
