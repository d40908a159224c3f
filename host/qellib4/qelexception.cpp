// qelexception.cpp: the exception that carries a result code.
#include <qellib4/qelexception.h>
#include <qellib4/resultcodes.h>

CQelException::CQelException(unsigned int code, unsigned long second, const wchar_t* file, int line,
                             bool autoDelete)
    : CException(autoDelete), m_code(code), m_second(second), m_file(file != nullptr ? file : L""),
      m_line(line)
{}

CQelException::~CQelException() = default;

std::wstring CQelException::GetErrorText() const
{
    std::wstring text = qel::ResultText(m_code);
    if (m_second != 0)
        text += L" (" + std::to_wstring(m_second) + L")";
    return text;
}
