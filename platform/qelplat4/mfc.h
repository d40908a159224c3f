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
    CString(const wchar_t* text) : m_text(text != nullptr ? text : L"") {}
    CString(const wchar_t* text, int length) : m_text(text, static_cast<std::size_t>(length)) {}
    explicit CString(std::wstring text) : m_text(std::move(text)) {}

    /// Loads a text from a module's string table. @return FALSE, leaving an empty text, when it has none
    BOOL LoadString(HINSTANCE module, UINT id) { return AfxLoadString(module, id, m_text); }
    /// Loads a text through the chain of resource modules.
    BOOL LoadString(UINT id) { return AfxLoadString(id, m_text); }

    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }
    /// The text with its terminator; valid until this object changes or ends.
    const wchar_t* GetString() const { return m_text.c_str(); }
    operator const wchar_t*() const { return m_text.c_str(); }
    /// The whole text, embedded zeros included.
    const std::wstring& Text() const& { return m_text; }
    std::wstring Text() && { return std::move(m_text); }

private:
    std::wstring m_text;
};
