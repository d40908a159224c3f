// qelexception.h: the exception that carries a result code.
#pragma once

#include <qellib4/qelbase.h>

#include <string>

/// A failure on its way to the operation that turns it into its result.
///
/// Thrown and caught by pointer: `throw new CQelException(code, 0, file, line, true)`; the catching
/// operation reads the code and calls Delete().
class QELLIB4_API CQelException : public CException
{
public:
    /// Carries a code and the place where it arose.
    /// @param code        result code, never 10001
    /// @param second      a further number of the thrower's choice; 0 where there is none
    /// @param file        name of the source file; copied, may be null
    /// @param line        line in it
    /// @param autoDelete  true when made with new, so that Delete() frees it
    CQelException(unsigned int code, unsigned long second, const wchar_t* file, int line, bool autoDelete);
    ~CQelException() override;

    /// The result code.
    unsigned int GetCode() const { return m_code; }
    /// The thrower's further number; 0 where there is none.
    unsigned long GetSecond() const { return m_second; }
    /// Name of the source file; empty where none was given.
    const std::wstring& GetFile() const { return m_file; }
    /// Line in the source file.
    int GetLine() const { return m_line; }
    /// The text behind the code.
    std::wstring GetErrorText() const override;

private:
    unsigned int m_code;
    unsigned long m_second;
    std::wstring m_file;
    int m_line;
};
