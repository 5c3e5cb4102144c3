#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Corvid {

// The records of the file formats as text for the manual, in the mdoc language.

// One field, or the fields of a block or base that follow without a label of their own.
struct FieldRow {
    std::string m_Label;
    std::string m_Text; // what kind of value it is, and its default

    friend bool operator==(const FieldRow&, const FieldRow&) = default;
};

struct RecordTable {
    std::string m_Name;
    std::vector<FieldRow> m_Rows;
};

class Manual {
public:
    void BeginSection(std::string_view title);
    void Paragraph(std::string_view text);
    void Table(const RecordTable& record);

    const std::string& GetText() const { return m_Text; }

private:
    std::string m_Text;
};

} // namespace Corvid
