#include "Engine/Layout/Infer/FitSearch.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <optional>

namespace Corvid {

namespace {

constexpr std::uint64_t kBytesOfStep = 64; // of a long string
constexpr std::size_t kMostDecisions = 2'000;
constexpr std::int32_t kMostEmptyElements = 65'536; // of elements that take no bytes

constexpr std::int32_t kUnknownWord = -1;
constexpr std::int32_t kNotThere = -2;

// One that no sample shows has two letters at least; anything else is no word at all.
bool CanBeNewWord(std::u16string_view word) {
    return word.size() >= 2 &&
           std::all_of(word.begin(), word.end(), [](char16_t unit) { return unit < 0x7F && unit > u' '; });
}

void NoteNumber(std::vector<std::int32_t>& numbers, std::int32_t number) {
    const auto place = std::lower_bound(numbers.begin(), numbers.end(), number);
    if (place == numbers.end() || *place != number)
        numbers.insert(place, number);
}

// The file cannot be followed any further.
void Drop(FitState& state, std::size_t file) {
    const FileSet others = ~(FileSet{1} << file);
    state.m_Dropped |= ~others;
    state.m_Active &= others;
    for (FitFrame& frame : state.m_Frames)
        frame.m_Outside &= others;
}

} // namespace

FitSearch::FitSearch(const FitQuestion& question, std::span<const std::string_view> files)
    : m_Question(question), m_Layout(question.m_Layout), m_Files(files), m_DeciderOf(m_Layout.GetSize(), -1) {
    for (LayoutIndex node = 0; node < m_Layout.GetSize(); ++node) {
        m_DecisionCount += IsOpen(node) ? 1u : 0u;
        if (m_Layout[node].m_Kind != LayoutKind::When)
            continue;
        const auto addDecider = [this](const LayoutCondition& condition) {
            if (condition.m_Field == kNoLayoutIndex)
                return;
            if (m_DeciderOf[condition.m_Field] < 0) {
                m_DeciderOf[condition.m_Field] = static_cast<std::int32_t>(m_DeciderCount++);
                m_Words.emplace_back();
            }
            auto& words = m_Words[static_cast<std::size_t>(m_DeciderOf[condition.m_Field])];
            words.insert(words.end(), condition.m_Words.begin(), condition.m_Words.end());
        };
        addDecider(m_Layout[node].m_Condition);
        for (const LayoutCondition& other : m_Layout[node].m_Doubt.m_Alternatives)
            addDecider(other);
    }
}

bool FitSearch::IsTooLarge() const {
    return m_DecisionCount > kMostDecisions;
}

bool FitSearch::IsOpen(LayoutIndex node) const {
    return m_Layout[node].m_Kind == LayoutKind::When
               ? !m_Layout[node].m_Doubt.m_Alternatives.empty()
               : !m_Question.m_Kinds[node].IsEmpty() && !m_Question.m_Kinds[node].IsOne();
}

int FitSearch::UsualChoice(LayoutIndex node) const {
    const LayoutKind kind = m_Layout[node].m_Kind;
    const KindSet kinds = m_Question.m_Kinds[node];
    return kind == LayoutKind::When ? 0 : static_cast<int>(kinds.Has(kind) ? kind : LikelyKind(kinds));
}

std::vector<int> FitSearch::ChoicesAt(LayoutIndex node) const {
    std::vector<int> choices{UsualChoice(node)};
    if (m_Layout[node].m_Kind == LayoutKind::When) {
        for (std::size_t other = 0; other < m_Layout[node].m_Doubt.m_Alternatives.size(); ++other)
            choices.push_back(static_cast<int>(other) + 1);
        return choices;
    }
    for (const LayoutKind kind :
         {LayoutKind::Int, LayoutKind::Float, LayoutKind::Color, LayoutKind::Double, LayoutKind::Int64}) {
        if (m_Question.m_Kinds[node].Has(kind) && static_cast<int>(kind) != choices.front())
            choices.push_back(static_cast<int>(kind));
    }
    return choices;
}

FitState FitSearch::StateAtBegin() const {
    static_assert(kMostFiles < std::numeric_limits<FileSet>::digits);
    FitState state;
    state.m_Active = (FileSet{1} << m_Files.size()) - 1;
    state.m_Offsets.assign(m_Files.size(), 0);
    state.m_Choices.assign(m_Layout.GetSize(), kUndecidedChoice);
    state.m_Deciders.assign(m_DeciderCount, std::vector<std::int32_t>(m_Files.size(), kNotThere));
    return state;
}

FitOutcome FitSearch::Find(int departures, std::span<const Told> told) {
    FitState state = StateAtBegin();
    m_MostCost = kUnlikeOfDeparture * (departures + 1) - 1;
    if (!told.empty())
        m_Failed.clear(); // what failed before may have failed by other choices
    m_Steps = 0;
    m_MostSteps = std::min(kMostStepsOfSearch, m_Question.m_StepsLeft);
    for (const auto [node, choice] : told) {
        state.m_Choices[node] = static_cast<std::int8_t>(choice);
        state.m_Departures += choice == UsualChoice(node) ? 0 : 1;
    }
    if (CostOf(state) > m_MostCost)
        return FitOutcome::NotFound;
    const bool isFound = Run(state);
    m_Question.m_StepsLeft -= std::min(m_Steps, m_Question.m_StepsLeft);
    if (isFound)
        return FitOutcome::Found;
    return m_Steps >= m_MostSteps ? FitOutcome::OutOfSteps : FitOutcome::NotFound;
}

void FitSearch::Note(FitAnswer& answer) {
    const LayoutIndex size = m_Layout.GetSize();
    answer.m_SeenBools.assign(size, 0);
    answer.m_SeenNumbers.assign(size, {});
    answer.m_Sides[0].assign(size, 0);
    answer.m_Sides[1].assign(size, 0);
    FitState state = StateAtBegin();
    state.m_Choices = m_Found.m_Choices;
    m_Steps = 0;
    m_MostSteps = kMostStepsOfSearch;
    m_MostCost = std::numeric_limits<int>::max();
    m_Notes = &answer;
    Run(state);
    m_Notes = nullptr;
}

std::int32_t FitSearch::WordIndex(LayoutIndex node, std::u16string_view word) const {
    const std::vector<std::u16string>& words = WordsOf(node);
    const auto found = std::find(words.begin(), words.end(), word);
    return found == words.end() ? kUnknownWord : static_cast<std::int32_t>(found - words.begin());
}

// Reads the node of every active file, and moves behind it.
bool FitSearch::ReadValue(FitState& state, LayoutKind kind) {
    const LayoutIndex node = state.m_Node;
    for (std::size_t file = 0; file < m_Files.size(); ++file) {
        if ((state.m_Active >> file & 1) == 0)
            continue;
        ++m_Steps;
        const std::string_view bytes = m_Files[file].substr(state.m_Offsets[file]);
        const std::optional<std::size_t> size = SizeOfPlausible(kind, bytes, m_Question.m_Ranges[node]);
        if (!size.has_value())
            return false;
        state.m_Unlike += IsUnlike(kind, bytes, m_Question.m_Ranges[node]) ? 1 : 0;
        if (CostOf(state) > m_MostCost)
            return false;
        const std::int32_t decider = m_DeciderOf[node];
        std::int32_t value = 0;
        if (kind == LayoutKind::Word) {
            const std::u16string word = TakeString(bytes);
            value = WordIndex(node, word);
            if (value == kUnknownWord) {
                if (!CanBeNewWord(word))
                    return false;
                Drop(state, file);
                continue;
            }
        } else if (kind == LayoutKind::String && decider >= 0) {
            value = WordIndex(node, TakeString(bytes));
        } else if (kind == LayoutKind::Bool) {
            value = bytes[0];
            if (m_Notes != nullptr)
                m_Notes->m_SeenBools[node] |= static_cast<std::uint8_t>(1 << value);
        } else if ((kind == LayoutKind::Int || kind == LayoutKind::Int64) && m_Notes != nullptr) {
            const bool isLarge = kind == LayoutKind::Int64 && TakeInt(bytes.substr(sizeof(std::int32_t))) != 0;
            NoteNumber(m_Notes->m_SeenNumbers[node],
                       isLarge ? std::numeric_limits<std::int32_t>::max() : TakeInt(bytes));
        }
        if (decider >= 0)
            state.m_Deciders[static_cast<std::size_t>(decider)][file] = value;
        state.m_Offsets[file] += *size;
        m_Steps += *size / kBytesOfStep;
    }
    state.m_Node = m_Layout[node].m_End;
    return true;
}

// The counts of all active files; the elements are read one after the other, side by side.
bool FitSearch::ReadCount(FitState& state) {
    const LayoutIndex node = state.m_Node;
    if (!ReadValue(state, LayoutKind::Int))
        return false;
    FitFrame& frame = state.m_Frames.emplace_back();
    frame.m_Node = node;
    frame.m_Outside = state.m_Active;
    frame.m_Element = -1;
    frame.m_Counts.assign(m_Files.size(), 0);
    for (std::size_t file = 0; file < m_Files.size(); ++file) {
        if ((state.m_Active >> file & 1) == 0)
            continue;
        const std::size_t offset = state.m_Offsets[file];
        frame.m_Counts[file] = TakeInt(m_Files[file].substr(offset - sizeof(std::int32_t)));
        if (!IsCountPossible(node, frame.m_Counts[file], m_Files[file].size() - offset))
            return false;
    }
    return true;
}

// Whether `left` bytes can hold so many elements.
bool FitSearch::IsCountPossible(LayoutIndex node, std::int32_t number, std::size_t left) const {
    const bool hasElements = m_Layout[node].m_End > node + 1;
    const auto most = std::max(kMostEmptyElements, static_cast<std::int32_t>(std::min<std::size_t>(left, 1u << 30)));
    return number >= 0 && (hasElements || number == 0) && number <= most &&
           static_cast<std::uint64_t>(number) <= std::max<std::uint64_t>(left, 1);
}

bool FitSearch::Holds(const LayoutCondition& condition, std::int32_t value) const {
    if (condition.m_Words.empty())
        return (value == 1) != condition.m_IsNegated;
    const std::vector<std::u16string>& known = WordsOf(condition.m_Field);
    const bool isOneOf = value >= 0 && std::find(condition.m_Words.begin(), condition.m_Words.end(),
                                                 known[static_cast<std::size_t>(value)]) != condition.m_Words.end();
    return isOneOf != condition.m_IsNegated;
}

// Goes on with the files in which the condition holds; past what it holds where there are none.
void FitSearch::EnterWhen(FitState& state, int choice) {
    const LayoutIndex node = state.m_Node;
    const LayoutCondition& condition =
        choice == 0 ? m_Layout[node].m_Condition
                    : m_Layout[node].m_Doubt.m_Alternatives[static_cast<std::size_t>(choice - 1)];
    FitFrame& frame = state.m_Frames.emplace_back();
    frame.m_Node = node;
    frame.m_Outside = state.m_Active;
    for (std::size_t file = 0; file < m_Files.size(); ++file) {
        const FileSet bit = FileSet{1} << file;
        if ((state.m_Active & bit) == 0)
            continue;
        std::int32_t value = kNotThere;
        if (condition.m_Field != kNoLayoutIndex)
            value = state.m_Deciders[static_cast<std::size_t>(m_DeciderOf[condition.m_Field])][file];
        if (value == kNotThere) {
            Drop(state, file);
            continue;
        }
        const bool isThere = Holds(condition, value);
        if (m_Notes != nullptr)
            ++m_Notes->m_Sides[isThere ? 1 : 0][node];
        if (!isThere)
            state.m_Active &= ~bit;
    }
    state.m_Node = state.m_Active != 0 ? node + 1 : m_Layout[node].m_End;
}

// At the end of what the innermost frame holds: the next element, or out of it. False when not at such an end.
bool FitSearch::Leave(FitState& state) {
    if (state.m_Frames.empty())
        return false;
    FitFrame& frame = state.m_Frames.back();
    const LayoutNode& node = m_Layout[frame.m_Node];
    if (state.m_Node != node.m_End)
        return false;
    if (node.m_Kind == LayoutKind::Count && node.m_End > frame.m_Node + 1) {
        ++frame.m_Element;
        FileSet more = 0;
        for (std::size_t file = 0; file < m_Files.size(); ++file) {
            if ((frame.m_Outside >> file & 1) != 0 && frame.m_Counts[file] > frame.m_Element)
                more |= FileSet{1} << file;
        }
        if (more != 0) {
            state.m_Active = more;
            state.m_Node = frame.m_Node + 1;
            return true;
        }
    }
    state.m_Active = frame.m_Outside;
    state.m_Frames.pop_back();
    return true;
}

bool FitSearch::IsOver(const FitState& state) const {
    std::size_t read = 0;
    for (std::size_t file = 0; file < m_Files.size(); ++file) {
        if ((state.m_Dropped >> file & 1) != 0)
            continue;
        ++read;
        if (state.m_Offsets[file] != m_Files[file].size())
            return false;
    }
    return 2 * read >= m_Files.size() && read > 0;
}

std::uint64_t FitSearch::HashOf(const FitState& state) const {
    std::uint64_t hash = 0xCBF29CE484222325;
    const auto add = [&hash](std::uint64_t value) {
        hash = (hash ^ value) * 0x9E3779B97F4A7C15;
        hash ^= hash >> 29;
    };
    add(state.m_Node);
    add(state.m_Active);
    add(state.m_Dropped);
    add(static_cast<std::uint64_t>(std::min(state.m_Unlike, kMostUnlike)));
    for (const std::size_t offset : state.m_Offsets)
        add(offset);
    for (const FitFrame& frame : state.m_Frames) {
        add(frame.m_Outside);
        add(static_cast<std::uint64_t>(frame.m_Element));
        for (const std::int32_t count : frame.m_Counts)
            add(static_cast<std::uint64_t>(count));
        // Choices within an open list bind its further elements.
        if (m_Layout[frame.m_Node].m_Kind == LayoutKind::Count) {
            for (LayoutIndex node = frame.m_Node; node < m_Layout[frame.m_Node].m_End; ++node)
                add(static_cast<std::uint64_t>(state.m_Choices[node] + 1));
        }
    }
    for (const std::vector<std::int32_t>& values : state.m_Deciders) {
        for (const std::int32_t value : values)
            add(static_cast<std::uint64_t>(value + 2));
    }
    return hash;
}

// Every choice at the node, the usual one first.
bool FitSearch::Branch(const FitState& state) {
    const std::uint64_t hash = HashOf(state);
    const int left = m_MostCost - CostOf(state);
    if (const auto failed = m_Failed.find(hash); failed != m_Failed.end() && failed->second >= left)
        return false;
    const LayoutIndex node = state.m_Node;
    const int usual = UsualChoice(node);
    for (const int choice : ChoicesAt(node)) {
        if (choice != usual && left < kUnlikeOfDeparture)
            break;
        FitState next = state;
        next.m_Choices[node] = static_cast<std::int8_t>(choice);
        next.m_Departures += choice == usual ? 0 : 1;
        if (Run(next))
            return true;
        if (m_Steps >= m_MostSteps)
            return false;
    }
    int& failed = m_Failed.try_emplace(hash, left).first->second;
    failed = std::max(failed, left);
    return false;
}

bool FitSearch::Run(FitState& state) {
    while (m_Steps < m_MostSteps) {
        if (Leave(state))
            continue;
        if (state.m_Node == m_Layout.GetSize()) {
            if (!IsOver(state))
                return false;
            if (m_Notes == nullptr)
                m_Found = state;
            return true;
        }
        ++m_Steps;
        const LayoutNode& node = m_Layout[state.m_Node];
        if (state.m_Active == 0) {
            state.m_Node = node.m_End;
            continue;
        }
        if (node.m_Kind == LayoutKind::Record || node.m_Kind == LayoutKind::Use) {
            ++state.m_Node;
            continue;
        }
        std::int8_t& choice = state.m_Choices[state.m_Node];
        if (choice == kUndecidedChoice && IsOpen(state.m_Node))
            return Branch(state);
        if (choice == kUndecidedChoice)
            choice = static_cast<std::int8_t>(node.m_Kind == LayoutKind::When ? 0 : static_cast<int>(node.m_Kind));
        if (node.m_Kind == LayoutKind::When) {
            EnterWhen(state, choice);
            continue;
        }
        const bool isRead =
            node.m_Kind == LayoutKind::Count ? ReadCount(state) : ReadValue(state, static_cast<LayoutKind>(choice));
        if (!isRead)
            return false;
    }
    return false;
}

} // namespace Corvid
