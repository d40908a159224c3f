// dovlogfile.h: the host's log file and the tracker that marks entry to and exit from a method.
#pragma once

#include <qellib4/export.h>

#include <memory>
#include <string>

class CException;
class CQelException;

/// A log of entries, one UTF-8 line each, appended to a file.
///
/// A host may override Write to send the entries elsewhere; it then needs no open file. The Add operations
/// return what Write returned, or true for an entry above the level, which costs one comparison. They never
/// throw: an entry that could not be made or written, for lack of memory or by an exception out of Write, is
/// lost and gives false. Null texts, file names and exceptions count as empty ones.
class QELLIB4_API CDovLogfile
{
public:
    /// How much an entry matters.
    enum EKind
    {
        eError,
        eWarning,
        eInformal
    };

    /// One entry on its way to Write.
    struct SEntry
    {
        EKind kind;        ///< how much it matters
        unsigned int code; ///< 0 for a literal text
        std::wstring text; ///< of the code, of the caller, or both
        int level;         ///< 0 for errors
        int line;          ///< in the file
        std::wstring file; ///< source that made the entry; may be empty
    };

    /// Makes a log without a file.
    CDovLogfile();
    CDovLogfile(const CDovLogfile&) = delete;
    CDovLogfile& operator=(const CDovLogfile&) = delete;
    virtual ~CDovLogfile();

    /// Opens the file for appending and makes it where it is missing; closes a file that was open.
    /// @return false when it cannot be opened
    bool Open(const std::wstring& path);
    /// Closes the file if one is open.
    void Close();

    /// Sets the largest detail level that is written; 4 at first. Errors are always written.
    void SetLevel(int level) { m_level = level; }
    /// The largest detail level that is written.
    int GetLevel() const { return m_level; }

    /// Enters the text behind a result code.
    bool AddError(unsigned int code, int line, const wchar_t* file);
    /// Enters the code's own text, followed by `text` where that is not empty.
    bool AddError(unsigned int code, const wchar_t* text, int line, const wchar_t* file);
    /// Enters a literal text as an error.
    bool AddError(const wchar_t* text, int line, const wchar_t* file);
    /// Enters an exception and leaves it alive; one without a code of its own stands under 10003.
    bool AddError(CException* exception, int line, const wchar_t* file);
    /// Enters an exception under its own code and leaves it alive.
    bool AddError(CQelException* exception, int line, const wchar_t* file);
    /// Enters a literal text as a warning, unless its level lies above the log's.
    bool AddWarning(const wchar_t* text, int level, int line, const wchar_t* file);
    /// Enters the text behind a code as information, unless its level lies above the log's.
    bool AddInformal(unsigned int code, int level, int line, const wchar_t* file);
    /// The same for a literal text.
    bool AddInformal(const wchar_t* text, int level, int line, const wchar_t* file);

    /// Takes every entry that is to be written. The base writes one line to the open file, flushed at once:
    /// time (UTC), kind, code, text and place; line breaks and other control characters are escaped.
    /// @return false when no file is open or the line could not be written
    virtual bool Write(const SEntry& entry);

private:
    bool Add(EKind kind, unsigned int code, const wchar_t* text, int level, int line,
             const wchar_t* file) noexcept;

    struct SFile;
    std::unique_ptr<SFile> m_file;
    int m_level = 4;
};

/// Writes "> " and the method's name when made and "< " and the name when it ends. Not copied.
///
/// The exit line is written if, and only if, the level let the entry line pass.
class QELLIB4_API CDovLogfileMethodTracker
{
public:
    /// Writes the entry line.
    /// @param log     null writes nothing; otherwise it must outlive the tracker
    /// @param level   of both lines
    /// @param method  qualified name, "Class::Method"; must outlive the tracker, as must `file`
    CDovLogfileMethodTracker(CDovLogfile* log, int level, const wchar_t* method, int line,
                             const wchar_t* file);
    CDovLogfileMethodTracker(const CDovLogfileMethodTracker&) = delete;
    CDovLogfileMethodTracker& operator=(const CDovLogfileMethodTracker&) = delete;
    /// Writes the exit line.
    ~CDovLogfileMethodTracker();

private:
    void WriteLine(const wchar_t* mark) noexcept;

    CDovLogfile* m_log;
    int m_level;
    const wchar_t* m_method;
    int m_line;
    const wchar_t* m_file;
};
