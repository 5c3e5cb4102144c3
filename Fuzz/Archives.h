#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Engine/Archive/FileArchiveSystem.h"
#include "Engine/Report/Reporter.h"
#include "Kinds/KindObject.h"

// What the fuzz targets share: archives over memory, and what one loading did.
namespace Corvid::Fuzz {

// Ends the run, with `statement`, where it does not hold.
void Require(bool holds, const char* statement);

// Reduces all reports of a thread to one number, their positions included. An archive that causes very many is stopped:
// they are all alike, and a count that is far too large would take up the time of many other inputs.
class ReportTrace final : public ReportSink {
public:
    ReportTrace() : m_Reporter(*this) {}

    void Watch(Archive* archive) { m_Archive = archive; }

    void Take(const Report& report) override;

    std::uint64_t GetHash() const { return m_Hash; }

    // Reports that a file of the engine's own making must not cause: all but those about values that an object keeps.
    int GetComplaintCount() const { return m_ComplaintCount; }

private:
    void Add(std::string_view bytes);
    void Add(std::uint64_t number) { Add({reinterpret_cast<const char*>(&number), sizeof number}); }

    Archive* m_Archive = nullptr;
    std::uint64_t m_Hash = 0;
    int m_Count = 0;
    int m_ComplaintCount = 0;
    std::string m_Text;
    Reporter m_Reporter;
};

// The ways of reading text; as written no checksum is computed. Binary files have but one.
enum class Way { AsWritten, InPlace, ByLine };

// What a loading tells beside the object.
struct Trace {
    bool m_HasArchive = false;
    std::uint64_t m_Reports = 0;
    int m_ComplaintCount = 0;
    ReportPosition m_End;
    std::optional<std::uint32_t> m_Checksum;

    bool IsLike(const Trace& other) const {
        return m_HasArchive == other.m_HasArchive && m_Reports == other.m_Reports &&
               m_End.m_Value == other.m_End.m_Value &&
               (!m_Checksum || !other.m_Checksum || *m_Checksum == *other.m_Checksum);
    }
};

// A fuzz input as a file of the format: the header is put in front unless it is there.
std::string AsFile(std::string_view input, ArchiveFormat format);

// Loads `object` from the bytes of a whole file.
Trace Load(const std::string& file, KindObject& object, Way way = Way::AsWritten);

// The bytes of a whole file that holds the object.
std::string Save(const KindObject& object, ArchiveFormat format);

// An empty object, named as all files over memory here.
inline std::unique_ptr<KindObject> CreateObject(Kind kind) {
    return CreateKindObject(kind, u"memory");
}

} // namespace Corvid::Fuzz
