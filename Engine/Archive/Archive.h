#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "Engine/Archive/Archivable.h"
#include "Engine/Archive/ElementBudget.h"
#include "Engine/Archive/Label.h"
#include "Engine/Math/Color.h"
#include "Engine/Math/IntPair.h"
#include "Engine/Math/Matrix.h"
#include "Engine/Math/Vector.h"
#include "Engine/Report/Reporter.h"

namespace Corvid {

// Through this interface every persistent object saves and loads itself, one typed operation per field. A read that
// fails leaves its target as it was and has been reported; nothing is thrown. Any number of archives may be open at
// once: what one of them reports, and what is reported while a record is loaded from it, carries its position.
class Archive : public PositionSource {
public:
    virtual ~Archive() = default;

    virtual void ReadEnum(Label label, std::int32_t& value);
    virtual void ReadColor(Label label, Color& value) = 0;
    virtual void ReadIntRect(Label label, IntRect& value) = 0;
    virtual void ReadIntPair(Label label, IntPair& value) = 0;
    virtual void ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) = 0;
    virtual void ReadVector4(Label label, Vector4& value) = 0;
    virtual void ReadMatrix44(Label label, Matrix44& value) = 0;
    virtual void ReadMatrix33(Label label, Matrix33& value) = 0;
    virtual void ReadVector3(Label label, Vector3& value) = 0;
    // Into `buffer` of `capacity` UTF-16 units, terminator included; what does not fit is reported and cut.
    virtual void ReadString(Label label, char16_t* buffer, int capacity) = 0;
    virtual void ReadInt64(Label label, std::int64_t& value) = 0;
    virtual void ReadBool(Label label, bool& value) = 0;
    virtual void ReadDouble(Label label, double& value) = 0;
    virtual void ReadFloat(Label label, float& value) = 0;
    virtual void ReadInt(Label label, std::int32_t& value) = 0;
    virtual void ReadInt(Label label, std::uint32_t& value) = 0;
    virtual void ReadObject(Archivable& object) = 0;
    virtual void ReadLabeledObject(Label label, Archivable& object, void* context) = 0;
    virtual void ReadLabeledObject(Label label, Archivable& object) = 0;

    virtual void WriteEnum(Label label, std::int32_t value);
    virtual void WriteColor(Label label, const Color& value) = 0;
    virtual void WriteIntRect(Label label, const IntRect& value) = 0;
    virtual void WriteIntPair(Label label, const IntPair& value) = 0;
    virtual void WriteIntPair(Label label, std::int32_t first, std::int32_t second) = 0;
    virtual void WriteVector4(Label label, const Vector4& value) = 0;
    virtual void WriteMatrix44(Label label, const Matrix44& value) = 0;
    virtual void WriteMatrix33(Label label, const Matrix33& value) = 0;
    virtual void WriteVector3(Label label, const Vector3& value) = 0;
    virtual void WriteString(Label label, const char16_t* value) = 0;
    virtual void WriteInt64(Label label, std::int64_t value) = 0;
    virtual void WriteBool(Label label, bool value) = 0;
    virtual void WriteDouble(Label label, double value) = 0;
    virtual void WriteFloat(Label label, float value) = 0;
    virtual void WriteInt(Label label, std::int32_t value) = 0;
    virtual void WriteInt(Label label, std::uint32_t value) = 0;
    virtual void WriteObject(const Archivable& object) = 0;
    virtual void WriteLabeledObject(Label label, const Archivable& object) = 0;

    // Around the elements of a list that is written: its count has been written just before. Encodings need neither;
    // what keeps the values apart does. An element is one value, or several under the given labels.
    virtual void BeginList(Label /*countLabel*/, std::span<const Label> /*elementLabels*/) {}
    virtual void EndList() {}

    // Whether what is computed anew for every file that is written is taken as the object holds it.
    virtual bool TakesAsStored() const { return false; }

    // Where the next value stands, for an archive that reads a file.
    ReportPosition GetPosition() const override { return {}; }

    // Later reads leave their targets alone and report nothing.
    virtual void Stop() { m_IsStopped = true; }
    bool IsStopped() const { return m_IsStopped; }

    // What the input has for a list of elements of the given smallest size.
    virtual ElementRoom GetRoom(const ElementSize& /*smallest*/) const { return {}; }
    ElementBudget& GetBudget() { return m_Budget; }

    // Skips an entry that nobody can read, up to the first value that carries `nextEntry` or one of `behindList`, where
    // the encoding has labels. What goes that way without being nested in the entry, under `contents`, is reported as
    // unread. An encoding without labels cannot find its place again and is stopped.
    virtual void SkipEntry(Label contents, Label nextEntry, std::span<const Label> behindList) = 0;

    // Whether the next value to be read carries the label; nothing where the encoding has no labels.
    virtual std::optional<bool> IsNext(Label /*label*/) { return std::nullopt; }

private:
    bool m_IsStopped = false;
    ElementBudget m_Budget;
};

} // namespace Corvid
