// dovlogfile.cpp: the host's log: which entries pass, and what they say.
#include <qellib4/dovlogfile.h>
#include <qellib4/qelexception.h>
#include <qellib4/resultcodes.h>

#include <qelplat4/native_path.h>

#include "logline.h"

#include <fstream>

struct CDovLogfile::SFile
{
    std::ofstream stream;
};

namespace {

const wchar_t* OrEmpty(const wchar_t* text)
{
    return text != nullptr ? text : L"";
}

// What an entry says: the code's own text, the given one, or both.
std::wstring TextOf(unsigned int code, const wchar_t* text)
{
    if (code == 0)
        return OrEmpty(text);
    std::wstring whole = qel::ResultText(code);
    if (text != nullptr && *text != L'\0')
        whole.append(L": ").append(text);
    return whole;
}

// An overridden Write may throw what it likes; none of it is the concern of the operation that logs.
template <class Work>
bool WithoutThrowing(Work&& work) noexcept
{
    try {
        return work();
    } catch (CException* exception) {
        exception->Delete();
    } catch (...) {
    }
    return false;
}

} // namespace

CDovLogfile::CDovLogfile() = default;

CDovLogfile::~CDovLogfile() = default;

bool CDovLogfile::Open(const std::wstring& path)
{
    Close();
    return WithoutThrowing([&] {
        auto file = std::make_unique<SFile>();
        file->stream.open(qel::NativePath(path), std::ios::binary | std::ios::app);
        if (!file->stream.is_open())
            return false;
        m_file = std::move(file);
        return true;
    });
}

void CDovLogfile::Close()
{
    m_file.reset();
}

bool CDovLogfile::AddError(unsigned int code, int line, const wchar_t* file)
{
    return Add(eError, code, nullptr, 0, line, file);
}

bool CDovLogfile::AddError(unsigned int code, const wchar_t* text, int line, const wchar_t* file)
{
    return Add(eError, code, text, 0, line, file);
}

bool CDovLogfile::AddError(const wchar_t* text, int line, const wchar_t* file)
{
    return Add(eError, 0, text, 0, line, file);
}

bool CDovLogfile::AddError(CException* exception, int line, const wchar_t* file)
{
    if (auto* const coded = dynamic_cast<CQelException*>(exception))
        return AddError(coded, line, file);
    return WithoutThrowing([&] {
        const std::wstring text = exception != nullptr ? exception->GetErrorText() : std::wstring();
        return Add(eError, qel::kFrameworkException, text.c_str(), 0, line, file);
    });
}

bool CDovLogfile::AddError(CQelException* exception, int line, const wchar_t* file)
{
    if (exception == nullptr)
        return Add(eError, qel::kUnknownException, nullptr, 0, line, file);
    return WithoutThrowing([&] {
        std::wstring raised;
        if (exception->GetSecond() != 0)
            raised = std::to_wstring(exception->GetSecond()) + L", ";
        raised += L"raised at " + exception->GetFile() + L":" + std::to_wstring(exception->GetLine());
        return Add(eError, exception->GetCode(), raised.c_str(), 0, line, file);
    });
}

bool CDovLogfile::AddWarning(const wchar_t* text, int level, int line, const wchar_t* file)
{
    return level > m_level || Add(eWarning, 0, text, level, line, file);
}

bool CDovLogfile::AddInformal(unsigned int code, int level, int line, const wchar_t* file)
{
    return level > m_level || Add(eInformal, code, nullptr, level, line, file);
}

bool CDovLogfile::AddInformal(const wchar_t* text, int level, int line, const wchar_t* file)
{
    return level > m_level || Add(eInformal, 0, text, level, line, file);
}

bool CDovLogfile::Add(EKind kind, unsigned int code, const wchar_t* text, int level, int line,
                      const wchar_t* file) noexcept
{
    return WithoutThrowing([&] {
        return Write(SEntry{kind, code, TextOf(code, text), level, line, OrEmpty(file)});
    });
}

bool CDovLogfile::Write(const SEntry& entry)
{
    if (!m_file)
        return false;
    std::ofstream& stream = m_file->stream;
    const std::string line = qel::LogLine(entry, std::chrono::system_clock::now());
    stream.clear(); // a disk that was full may have room again
    stream.write(line.data(), static_cast<std::streamsize>(line.size()));
    stream.flush();
    return stream.good();
}

CDovLogfileMethodTracker::CDovLogfileMethodTracker(CDovLogfile* log, int level, const wchar_t* method,
                                                   int line, const wchar_t* file)
    : m_log(log != nullptr && level <= log->GetLevel() ? log : nullptr), m_level(level),
      m_method(OrEmpty(method)), m_line(line), m_file(file)
{
    WriteLine(L"> ");
}

CDovLogfileMethodTracker::~CDovLogfileMethodTracker()
{
    WriteLine(L"< ");
}

void CDovLogfileMethodTracker::WriteLine(const wchar_t* mark) noexcept
{
    if (m_log == nullptr)
        return;
    WithoutThrowing([&] {
        const std::wstring text = std::wstring(mark) + m_method;
        return m_log->AddInformal(text.c_str(), m_level, m_line, m_file);
    });
}
