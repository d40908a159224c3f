// mfc.h: the few classes of the application framework that the libraries stand on.
#pragma once

#include <qelplat4/afxbase.h>
#include <qelplat4/afxmodule.h>
#include <qelplat4/export.h>
#include <qelplat4/oledatetime.h>
#include <qelplat4/olevariant.h>
#include <qelplat4/types.h>

#include <string>
#include <utility>

/// The framework's text class, as far as results of the SQL layer need it: an owned wide text.
class QELPLAT4_API CString
{
public:
    CString() = default;
    /// Copies a zero-terminated text; null gives an empty one.
    CString(const wchar_t* text) : m_text(text != nullptr ? text : L"") {}
    /// Copies `length` characters, which must be there.
    CString(const wchar_t* text, int length) : m_text(text, static_cast<std::size_t>(length)) {}
    /// Takes the whole text, embedded zeros included.
    explicit CString(std::wstring text) : m_text(std::move(text)) {}

    /// Loads a text from a module's string table.
    /// @return FALSE, leaving an empty text, when it has none
    BOOL LoadString(HINSTANCE module, UINT id) { return AfxLoadString(module, id, m_text); }
    /// The same through the chain of resource modules.
    BOOL LoadString(UINT id) { return AfxLoadString(id, m_text); }

    /// Number of characters.
    int GetLength() const { return static_cast<int>(m_text.size()); }
    /// Whether there is no character.
    bool IsEmpty() const { return m_text.empty(); }
    /// The text with its terminator; valid until this object changes or ends.
    const wchar_t* GetString() const { return m_text.c_str(); }
    /// As GetString.
    operator const wchar_t*() const { return m_text.c_str(); }
    /// The whole text, embedded zeros included.
    const std::wstring& Text() const& { return m_text; }
    /// The same, moved out of an object that is about to end.
    std::wstring Text() && { return std::move(m_text); }

    /// Texts are compared, never their addresses; null counts as empty.
    /// @{
    friend bool operator==(const CString& left, const CString& right) { return left.m_text == right.m_text; }
    friend bool operator==(const CString& left, const wchar_t* right) { return left == CString(right); }
    friend bool operator==(const wchar_t* left, const CString& right) { return CString(left) == right; }
    friend bool operator!=(const CString& left, const CString& right) { return !(left == right); }
    friend bool operator!=(const CString& left, const wchar_t* right) { return !(left == right); }
    friend bool operator!=(const wchar_t* left, const CString& right) { return !(left == right); }
    /// @}

private:
    std::wstring m_text;
};
