// foreign_frames.cpp: finds the unwind tables of modules that gave theirs to another copy of the C++ runtime.
//
// A module hands its table to the compiler's own runtime DLL as it is loaded, if some library of the process
// has brought that one along, and not to the runtime in this library, which then could not throw through it.
// So a place in a program that has no table here is looked up where it must be: in the image of its module.
#include <qelplat4/afxentry.h>

#include <cstdint>
#include <cstring>

namespace {

/// What the unwinder wants to know beside the entry; the compiler's own layout.
struct SUnwindBases
{
    void* text;
    void* data;
    void* function;
};

template <class Value>
Value ValueAt(const BYTE* place)
{
    Value value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

/// One entry of a table: what functions share (a common one), or one function's own part.
class CEntry
{
public:
    explicit CEntry(const BYTE* place) : m_place(place) {}

    bool IsLast() const { return Length() == 0; }
    bool IsCommon() const { return Pointer() == 0; }
    CEntry Common() const { return CEntry(m_place + 4 - Pointer()); }
    CEntry Next() const { return CEntry(m_place + 4 + Length()); }
    const BYTE* Place() const { return m_place; }

    /// Whether a table begins here: with a common entry of the one version that there is.
    bool BeginsTable() const { return !IsLast() && IsCommon() && m_place[8] == 1; }

    /// The first byte of the function, and the bytes that it has.
    const BYTE* Function() const
    {
        const auto number = ValueAt<std::uintptr_t>(m_place + 8);
        const auto base = Common().IsRelative() ? reinterpret_cast<std::uintptr_t>(m_place + 8) : 0;
        return reinterpret_cast<const BYTE*>(base + number);
    }
    std::uintptr_t FunctionSize() const { return ValueAt<std::uintptr_t>(m_place + 12); }

private:
    std::uint32_t Length() const { return ValueAt<std::uint32_t>(m_place); }
    std::uint32_t Pointer() const { return ValueAt<std::uint32_t>(m_place + 4); }

    /// Whether addresses count from where they stand. A common entry says so in the last byte of its extra
    /// data, which stand behind three small numbers.
    bool IsRelative() const
    {
        constexpr BYTE kRelative = 0x10;
        const char* const letters = reinterpret_cast<const char*>(m_place + 9);
        const char* const found = letters[0] == 'z' ? std::strchr(letters, 'R') : nullptr;
        if (found == nullptr)
            return false;
        const BYTE* extra = m_place + 9 + std::strlen(letters) + 1;
        for (int skipped = 0; skipped < 4;
             ++skipped) // two alignments, the return column, the size of the rest
            while ((*extra++ & 0x80) != 0) {
            }
        for (const char* letter = letters + 1; letter != found; ++letter)
            extra += *letter == 'P' ? 5 : 1; // the personality: its form and its address
        return (*extra & 0x70) == kRelative;
    }

    const BYTE* m_place;
};

/// The table of a module's image; null when it has none.
const BYTE* TableOf(HMODULE module)
{
    const BYTE* const image = reinterpret_cast<const BYTE*>(module);
    const auto* const start = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* const header = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + start->e_lfanew);
    const IMAGE_SECTION_HEADER* const sections = IMAGE_FIRST_SECTION(header);
    for (int index = 0; index < header->FileHeader.NumberOfSections; ++index) {
        // A name too long for its field is cut, or the number of a text that is not in memory.
        const IMAGE_SECTION_HEADER& section = sections[index];
        const bool maybe = std::memcmp(section.Name, ".eh_fram", 8) == 0 || section.Name[0] == '/';
        const bool inMemory = (section.Characteristics & IMAGE_SCN_MEM_DISCARDABLE) == 0;
        const BYTE* const table = image + section.VirtualAddress;
        if (maybe && inMemory && section.Misc.VirtualSize >= 16 && CEntry(table).BeginsTable())
            return table;
    }
    return nullptr;
}

const BYTE* EntryOf(const BYTE* place, SUnwindBases& bases)
{
    const HMODULE module = qel::ModuleOf(place);
    const BYTE* const table = module != nullptr ? TableOf(module) : nullptr;
    if (table == nullptr)
        return nullptr;
    for (CEntry entry(table); !entry.IsLast(); entry = entry.Next()) {
        if (entry.IsCommon())
            continue;
        const BYTE* const function = entry.Function();
        if (place < function || place >= function + entry.FunctionSize())
            continue;
        bases = {nullptr, nullptr, const_cast<BYTE*>(function)};
        return entry.Place();
    }
    return nullptr;
}

} // namespace

// The linker puts this function in the place of the runtime's own, and names that one for it.
extern "C" const void* __real__Unwind_Find_FDE(void* place, SUnwindBases* bases);

extern "C" const void* __wrap__Unwind_Find_FDE(void* place, SUnwindBases* bases)
{
    const void* const known = __real__Unwind_Find_FDE(place, bases);
    return known != nullptr ? known : EntryOf(static_cast<const BYTE*>(place), *bases);
}
