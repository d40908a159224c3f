// store_testing.cpp: the store's test of itself.
#include "engine_call.h"
#include "progress.h"
#include "store_format.h"
#include "storefile.h"

#include <qelplat4/utf16.h>

#include <sqlite3.h>

#include <sstream>

namespace qel {
namespace {

/// Writes one line per fault and counts them.
class CFaults
{
public:
    CFaults(CQelFile* report, unsigned long& count) : m_report(report), m_count(count) {}

    void Add(const std::wstring& text)
    {
        ++m_count;
        if (m_report == nullptr)
            return;
        const std::string line = ToUtf8(text) + "\n";
        m_report->Write(line.data(), static_cast<unsigned int>(line.size()));
    }

private:
    CQelFile* m_report;
    unsigned long& m_count;
};

/// Runs a part of the test. What the engine reports is to be counted as a fault; lack of memory is none.
/// @return the code of the fault, or success
template <class Part>
unsigned int Try(Part&& part)
{
    const unsigned int code = RunOperation(nullptr, {kSourceQelFDB, __LINE__}, [&] {
        part();
        return kSuccess;
    });
    if (code == kUnknownException || code == kSqlBase + SQLITE_NOMEM)
        Fail(code, __LINE__);
    return code;
}

// One answer of the engine may hold many lines, under a heading of its own.
void AddEngineLines(const std::wstring& answer, CFaults& faults)
{
    std::wistringstream lines(answer);
    for (std::wstring line; std::getline(lines, line);) {
        if (!line.empty() && line != L"ok" && line.compare(0, 3, L"***") != 0)
            faults.Add(L"engine: " + line);
    }
}

void TestEngine(CQelSQLite& db, CFaults& faults)
{
    std::wstring answer;
    const unsigned int code = Try([&] {
        CQelSQLite::CStatement check(&db);
        check.Prepare(L"PRAGMA integrity_check(1000)");
        while (Next(check))
            answer += check.GetString(0).Text() + L"\n";
    });
    AddEngineLines(answer, faults);
    if (code != kSuccess)
        faults.Add(L"engine: " + ResultText(code));
}

std::wstring NameOf(long long key)
{
    const CDovBlobDB::SSelector record = AddressOf(key);
    return L"record " + std::to_wstring(record.selector) + L"/" + std::to_wstring(record.oid);
}

void TestRecord(CQelSQLite::CStatement& row, CFaults& faults)
{
    const long long key = row.GetInt(0);
    const unsigned char* data = nullptr;
    unsigned int size = 0;
    if (key < 0 || key > kLargestKey)
        faults.Add(L"key " + std::to_wstring(key) + L": no address of a record");
    else if (!row.GetBytes(2, data, size) || row.GetInt(1) != RecordChecksum(key, data, size))
        faults.Add(NameOf(key) + L": checksum mismatch");
}

void TestRecords(CQelSQLite& db, CFaults& faults, CProgress& progress)
{
    CQelSQLite::CStatement query(&db);
    query.Prepare(L"SELECT id,crc,data FROM rec ORDER BY id");
    long long last = -1;
    for (;;) {
        bool more = false;
        if (const unsigned int code = Try([&] { more = Next(query); }); code != kSuccess)
            return faults.Add(L"records after key " + std::to_wstring(last) + L": " + ResultText(code));
        if (!more)
            return;
        TestRecord(query, faults);
        last = query.GetInt(0);
        progress.Step();
    }
}

} // namespace

unsigned int CStoreFile::SelfTest(CQelFile* report, unsigned long& errors, CDovBlobDB::TProgress progress)
{
    CFaults faults(report, errors);
    CProgress told(progress, L"Testing the store", [&] {
        unsigned int total = 0; // stays where the records cannot be counted, which the test itself then tells
        Try([&] { total = CountRecords(); });
        return total;
    });
    TestEngine(m_db, faults);
    TestRecords(m_db, faults, told);
    told.End();
    return kSuccess;
}

} // namespace qel
