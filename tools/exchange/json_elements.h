// json_elements.h: the elements of a JSON array as texts, one at a time.
#pragma once

#include <istream>
#include <string>

namespace tool {

/// Cuts a file that holds one array, or one object, into its elements; only one is in memory. Not copied.
///
/// What stands inside an element is not looked at but for its brackets and quotes.
class CJsonElements
{
public:
    /// @param in       outlives the object
    /// @param largest  bytes of an element that is taken; an open quote would gather the rest of the file
    explicit CJsonElements(std::istream& in, std::size_t largest = std::size_t{1} << 30)
        : m_in(in), m_largest(largest)
    {}
    CJsonElements(const CJsonElements&) = delete;
    CJsonElements& operator=(const CJsonElements&) = delete;

    /// @param text  out: the element
    /// @param line  out: where it begins, counted from 1
    /// @return false at the end
    /// @throws SFailure  4 where there is no array, or it does not go on as one; 1 when reading fails
    bool Next(std::string& text, unsigned long long& line);
    unsigned long long BytesRead() const { return m_bytesRead; }
    /// How many elements were begun.
    unsigned long long Count() const { return m_count; }

private:
    int Take();
    int TakeSolid();
    int Begin();
    void TakeElement(int first, std::string& text);
    void TakeText(std::string& text);
    void Put(int letter, std::string& text) const;
    [[noreturn]] void Fail(const std::string& message) const;

    enum class EPlace
    {
        eBegin,
        eArray,   ///< before an element
        eElement, ///< behind an element
        eEnd
    };

    std::istream& m_in;
    std::size_t m_largest;
    EPlace m_place = EPlace::eBegin;
    bool m_single = false;
    unsigned long long m_line = 1;
    unsigned long long m_bytesRead = 0;
    unsigned long long m_count = 0;
};

} // namespace tool
