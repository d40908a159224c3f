// text.cpp: every conversion of the program is this one.
#include "text.h"

#include <qellib4/qellib4.h>

namespace tool {

std::wstring Wide(const std::string& utf8)
{
    return TavCharConvert().UTF8ToUnicode(utf8);
}

std::string Utf8(const std::wstring& text)
{
    return TavCharConvert().ToUTF8(text);
}

std::string Quoted(const std::wstring& name)
{
    return Quoted(Utf8(name));
}

std::string Quoted(const std::string& name)
{
    return "'" + name + "'";
}

} // namespace tool
