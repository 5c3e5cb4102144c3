#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Corvid/Json/Json.h"
#include "Engine/File/ByteSink.h"

namespace Corvid {

// Puts JSON together piece by piece, in the form that the JSON library gives a whole value.
class JsonWriter {
public:
    JsonWriter(bool isIndented, ByteSink& sink) : m_IsIndented(isIndented), m_Sink(sink) {}

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }

    // Of the next member of an object; a JSON string already.
    void Name(std::string_view quoted);

    void Add(const Json& value); // no object and no array

    // Behind the whole value, which ends with a line end where it is indented.
    void Finish();

private:
    void Begin(char bracket);
    void End(char bracket);
    void Separate();
    void BreakLine();

    bool m_IsIndented;
    ByteSink& m_Sink;
    std::string m_Text; // not handed on yet
    std::size_t m_Depth = 0;
    bool m_IsFirst = true;  // nothing stands behind the last bracket yet
    bool m_HasName = false; // the value stands behind its name
};

} // namespace Corvid
