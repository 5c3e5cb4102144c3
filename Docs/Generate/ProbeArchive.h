#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Engine/Archive/NullArchive.h"
#include "Engine/String/ClassName.h"

namespace Corvid {

// Holds nothing: tells by the operation that reads a value what the value is in a file, and by the blocks that a record
// reads what it is made of.
class ProbeArchive final : public NullArchive {
public:
    const std::string& GetKind() const { return m_Kind; } // of the last value
    bool IsRecord() const { return m_IsRecord; }          // its kind is the name of its class
    int GetValueCount() const { return m_ValueCount; }
    const std::vector<std::string>& GetBlocks() const { return m_Blocks; } // class names

    void ReadColor(Label, Color&) override { Take("colour"); }
    void ReadIntRect(Label, IntRect&) override { Take("rectangle"); }
    void ReadIntPair(Label, IntPair&) override { Take("integer pair"); }
    void ReadIntPair(Label, std::int32_t&, std::int32_t&) override { Take("integer pair"); }
    void ReadVector4(Label, Vector4&) override { Take("vector of 4"); }
    void ReadMatrix44(Label, Matrix44&) override { Take("matrix of 4 rows"); }
    void ReadMatrix33(Label, Matrix33&) override { Take("matrix"); }
    void ReadVector3(Label, Vector3&) override { Take("vector"); }
    void ReadString(Label, char16_t*, int capacity) override { Take("string of " + std::to_string(capacity - 1)); }
    void ReadInt64(Label, std::int64_t&) override { Take("long integer"); }
    void ReadBool(Label, bool&) override { Take("boolean"); }
    void ReadDouble(Label, double&) override { Take("double"); }
    void ReadFloat(Label, float&) override { Take("float"); }
    void ReadInt(Label, std::int32_t&) override { Take("integer"); }
    void ReadInt(Label, std::uint32_t&) override { Take("integer"); }
    void ReadObject(Archivable& object) override { m_Blocks.push_back(ClassNameOf(typeid(object))); }
    void ReadLabeledObject(Label, Archivable& object, void*) override { Take(ClassNameOf(typeid(object)), true); }
    void ReadLabeledObject(Label, Archivable& object) override { Take(ClassNameOf(typeid(object)), true); }

private:
    void Take(std::string kind, bool isRecord = false) {
        m_Kind = std::move(kind);
        m_IsRecord = isRecord;
        ++m_ValueCount;
    }

    std::string m_Kind;
    bool m_IsRecord = false;
    int m_ValueCount = 0;
    std::vector<std::string> m_Blocks;
};

} // namespace Corvid
