#include "Corvid/Commands/LayoutShow.h"

#include <algorithm>
#include <optional>

#include "Corvid/Terminal/Console.h"
#include "Engine/Layout/LayoutText.h"
#include "Engine/String/NearWord.h"
#include "Engine/String/Unicode.h"
#include "GS/Entity/EntityTypeTable.h"
#include "Kinds/BuiltInLayouts.h"

namespace Corvid {

namespace {

constexpr std::string_view kCommand = "layout show";

// Where the layout of a type comes from, and what is to be said of it.
struct LayoutInForce {
    std::string m_Origin; // empty: there is none
    std::string m_State;
    std::optional<Layout> m_Layout;
};

std::string At(const LibraryLayout& file, const LayoutError& error) {
    return ToUtf8(file.m_Path) + ':' + std::to_string(error.m_Line) + ':' + std::to_string(error.m_Column) +
           ": error: " + error.m_Message + " [bad-layout]";
}

LayoutInForce FindLayout(EntityType type, const LayoutLibrary& library) {
    const EntityTypeRow& row = *FindEntityType(type);
    LayoutInForce found;
    if (row.m_Create == nullptr) {
        found.m_State = "no definition";
    } else if (row.m_IsLayoutSettled) {
        found.m_Origin = "built-in";
        found.m_Layout = BuiltInLayout(type);
    } else if (const auto file = library.Find(ToUtf8(row.m_Word)); file == nullptr) {
        found.m_State = "no layout";
    } else {
        found.m_Origin = ToUtf8(file->m_Path);
        if (file->m_Plan == nullptr) {
            found.m_State = At(*file, file->m_Errors.front());
        } else {
            found.m_Layout = file->m_Plan->GetLayout();
            const auto nodes = found.m_Layout->GetNodes();
            const auto marks = std::count_if(nodes.begin(), nodes.end(), [](auto& node) { return node.m_IsDoubtful; });
            if (found.m_Layout->IsAssumed())
                found.m_State = "assumed";
            if (marks > 0)
                found.m_State +=
                    (found.m_State.empty() ? "" : ", ") + std::to_string(marks) + (marks == 1 ? " doubt" : " doubts");
        }
    }
    return found;
}

int ShowTable(const LayoutLibrary& library, Console& console) {
    std::size_t widest = 0;
    for (const EntityTypeRow& row : kEntityTypes)
        widest = std::max(widest, ToUtf8(row.m_Word).size());
    for (int value = 0; value < kEntityTypeCount; ++value) {
        const std::string word = ToUtf8(kEntityTypes[value].m_Word);
        const LayoutInForce found = FindLayout(static_cast<EntityType>(value), library);
        std::string line = word + std::string(widest + 2 - word.size(), ' ') + found.m_Origin;
        if (!found.m_State.empty())
            line += found.m_Origin.empty() ? found.m_State : " (" + found.m_State + ')';
        console.Print(line + '\n');
    }
    return kExitDone;
}

int ShowLayout(EntityType type, const LayoutLibrary& library, Console& console) {
    const LayoutInForce found = FindLayout(type, library);
    if (found.m_Layout) {
        LayoutComments comments;
        comments.m_Head = {found.m_Origin};
        console.Print(WriteLayoutText(*found.m_Layout, BuiltInBlocks(), comments));
        return kExitDone;
    }
    const std::string word = ToUtf8(FindEntityType(type)->m_Word);
    if (!found.m_Origin.empty())
        console.PrintError(found.m_State + '\n');
    else if (FindEntityType(type)->m_Create == nullptr)
        console.PrintError("corvid layout show: '" + word +
                           "' has no definition: files of this type are never loaded\n");
    else
        console.PrintError("corvid layout show: nobody has described the fields of '" + word +
                           "'; corvid layout infer SAMPLE... -o DIR makes a layout from sample files\n");
    return kExitFindings;
}

} // namespace

void DeclareCommand(CommandDeclaration& declaration, LayoutShowOptions& options) {
    declaration.Describe("Prints the layout that is in force for an entity type, or a table of all types.",
                         "[OPTION]... [TYPE]");
    declaration.Explain("The layout is printed as a layout file, with where it comes from in a comment; types that are "
                        "built in have one, too. See corvid-layout(5).");
    declaration.Operands("TYPE", options.m_Types, 0, 1, "the type word, as files hold it behind entityType");
    DeclareLayoutFolder(declaration, options.m_Layouts);
    DeclareLook(declaration, options.m_Look);
    declaration.Example("corvid layout show", "prints for each type where its layout comes from");
    declaration.Example("corvid layout show Debris", "prints the fields of debris");
}

int RunCommand(const LayoutShowOptions& options, Console& console) {
    const LayoutLibrary& library = *options.m_Layouts.m_Library;
    if (options.m_Types.empty())
        return ShowTable(library, console);
    std::vector<std::string> words;
    for (int value = 0; value < kEntityTypeCount; ++value) {
        words.push_back(ToUtf8(kEntityTypes[value].m_Word));
        if (words.back() == options.m_Types[0])
            return ShowLayout(static_cast<EntityType>(value), library, console);
    }
    const std::vector<std::string_view> views(words.begin(), words.end());
    const std::string_view near = NearestWord(options.m_Types[0], views);
    return console.PrintUsageError(kCommand, "'" + options.m_Types[0] + "' is no entity type" +
                                                 (near.empty() ? "" : " (did you mean '" + std::string(near) + "'?)"));
}

} // namespace Corvid
