// propdb_hard_failures_test.cpp: interrupted statements, unreadable files, damaged pages, writes that fail.
#include "property_host.h"

#include <fstream>

using namespace outside;

namespace {

using TNumbers = std::vector<unsigned long>;

constexpr int kPageSize = 512;

/// One call and its answer as text, the code first.
struct SCall
{
    const char* name;
    std::string (*answer)(CDerivedDB& db);
    const char* nothing; ///< what stands behind the code of a failure
};

void PrintTo(const SCall& call, std::ostream* out)
{
    *out << call.name;
}

struct SCallName
{
    std::string operator()(const testing::TestParamInfo<SCall>& row) const { return row.param.name; }
};

/// Lets one read of the main database file fail, or one write, sync or cut: the first, the second, and so on.
class CFailingFile
{
public:
    enum EKind
    {
        eReads,
        eChanges
    };

    CFailingFile(sqlite3* handle, EKind kind, int at)
    {
        sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &m_file);
        Real() = m_file->pMethods;
        m_methods = *m_file->pMethods;
        m_methods.iVersion = 1; // no memory maps past these
        if (kind == eReads)
            m_methods.xRead = [](sqlite3_file* file, void* data, int size, sqlite3_int64 offset) {
                return Meets() ? SQLITE_IOERR_READ : Real()->xRead(file, data, size, offset);
            };
        else
            FailChanges();
        m_file->pMethods = &m_methods;
        Left() = at;
    }
    CFailingFile(const CFailingFile&) = delete;
    CFailingFile& operator=(const CFailingFile&) = delete;
    ~CFailingFile() { m_file->pMethods = Real(); }

    static bool Failed() { return Left() <= 0; }

private:
    void FailChanges()
    {
        m_methods.xWrite = [](sqlite3_file* file, const void* data, int size, sqlite3_int64 offset) {
            return Meets() ? SQLITE_IOERR_WRITE : Real()->xWrite(file, data, size, offset);
        };
        m_methods.xSync = [](sqlite3_file* file, int flags) {
            return Meets() ? SQLITE_IOERR_FSYNC : Real()->xSync(file, flags);
        };
        m_methods.xTruncate = [](sqlite3_file* file, sqlite3_int64 size) {
            return Meets() ? SQLITE_IOERR_TRUNCATE : Real()->xTruncate(file, size);
        };
    }
    static const sqlite3_io_methods*& Real()
    {
        static const sqlite3_io_methods* methods = nullptr;
        return methods;
    }
    static int& Left()
    {
        static int left = 0;
        return left;
    }
    static bool Meets() { return --Left() == 0; }

    sqlite3_file* m_file = nullptr;
    sqlite3_io_methods m_methods{};
};

/// A file of small pages: Lamps (1000) with a number and a text, and twelve records.
class OutsideFile : public testing::TestWithParam<SCall>
{
public:
    ~OutsideFile() override
    {
        db.SetNotifyCallback(nullptr, 0);
        db.SetLogfile(nullptr);
    }

protected:
    OutsideFile()
    {
        sql.Open(file.Path());
        outside::Run(sql.Handle(), "PRAGMA page_size=" + std::to_string(kPageSize));
        db.Attach(true, nullptr);
        CQelTable table(1000);
        table.Properties().name = L"Lamps";
        table.Properties().columns = {Column(L"a"), Column(L"b", CQelProperty::eString, 1)};
        db.AddTable(table);
        outside::Run(sql.Handle(), "BEGIN");
        for (int i = 1; i <= 12; ++i)
            db.SetRecord(1000, static_cast<unsigned long>(i),
                         {Data(1, Number(i % 5)), Data(2, Text(std::wstring(40, L'x')))});
        outside::Run(sql.Handle(), "COMMIT");
        log.SetLevel(4); // without trackers
        db.SetLogfile(&log);
        db.SetNotifyCallback(Hear, 0);
        Told();
    }
    /// Nothing of the file is in memory afterwards but the catalogue.
    void OpenAnew()
    {
        sql.Close();
        ASSERT_EQ(sql.Open(file.Path()), 0);
    }
    std::string Stored()
    {
        return outside::Ask(sql.Handle(), "SELECT * FROM qeltpt") + "; " +
               outside::Ask(sql.Handle(), "SELECT * FROM qeltpc") + "; " +
               outside::Ask(sql.Handle(), "SELECT foid,toid,coid,data FROM qeltpd");
    }
    /// @return whether it was the whole answer; if not, it must be that of the failure
    bool ExpectWholeOr(const std::string& failure, const std::string& whole, const std::string& answer,
                       int at)
    {
        const std::string told = Told();
        if (answer == whole)
            return true;
        EXPECT_EQ(answer, failure + GetParam().nothing) << "at " << at;
        EXPECT_NE(told.find("E " + failure), std::string::npos) << told << "at " << at;
        EXPECT_EQ(told.find("> "), std::string::npos) << told << "at " << at;
        return false;
    }

    CDatabaseFile file;
    CQelSQLite sql;
    CDerivedDB db{&sql};
    CHostLog log;
};

std::string Code(unsigned int code)
{
    return std::to_string(code);
}

std::vector<SCall> Readers()
{
    return {{"GetRecord",
             [](CDerivedDB& db) {
                 std::vector<SQelPropColumnData> record;
                 const unsigned int code = db.GetRecord(1000, 7, record);
                 return Code(code) + (code == 10001 ? " " + Show(record) : "");
             },
             ""},
            {"GetColumn",
             [](CDerivedDB& db) {
                 SQelPropColumnData data = Data(5, Number(5));
                 const unsigned int code = db.GetColumn(1000, 7, 2, data);
                 return Code(code) + " " + Show({data});
             },
             " 2=null"},
            {"GetRecordCount",
             [](CDerivedDB& db) {
                 unsigned int count = 99;
                 const unsigned int code = db.GetRecordCount(1000, count);
                 return Code(code) + " " + std::to_string(count);
             },
             " 0"},
            {"ListingInOrderOfStorage",
             [](CDerivedDB& db) {
                 TNumbers oids = {99};
                 const unsigned int code = db.GetRecordOids(1000, oids, nullptr);
                 return Code(code) + " " + Show(oids);
             },
             " "},
            {"SortedListing",
             [](CDerivedDB& db) {
                 TNumbers oids = {99};
                 std::vector<CQelPropDB::SSortItem> keys(2);
                 keys[0].column = 1;
                 keys[1].column = 2;
                 const unsigned int code = db.GetRecordOids(1000, oids, &keys);
                 return Code(code) + " " + std::to_string(oids.size());
             },
             " 0"},
            {"BulkRecords",
             [](CDerivedDB& db) {
                 const unsigned int code = db.FillBulkCache();
                 return Code(code) + (code == 10001 ? " " + std::to_string(db.GetBulkRecords().size()) : "");
             },
             ""},
            {"LoadTables",
             [](CDerivedDB& db) {
                 std::map<unsigned long, CQelTable> tables;
                 tables.emplace(99, CQelTable(99));
                 const unsigned int code = db.LoadTables(tables);
                 return Code(code) + " " + std::to_string(tables.size());
             },
             " 0"}};
}

class OutsideReaders : public OutsideFile
{};

int Tick(void* left)
{
    return --*static_cast<int*>(left) == 0 ? 1 : 0;
}

TEST_P(OutsideReaders, GiveTheWholeAnswerOrTheCodeOfAnInterrupt)
{
    const std::string whole = GetParam().answer(db);
    int failures = 0;
    for (int at = 1, left = 0; left <= 0; ++at) {
        left = at;
        Told();
        sqlite3_progress_handler(sql.Handle(), 1, Tick, &left);
        const std::string answer = GetParam().answer(db);
        sqlite3_progress_handler(sql.Handle(), 0, nullptr, nullptr);
        failures += ExpectWholeOr("17309", whole, answer, at) ? 0 : 1;
    }
    EXPECT_GT(failures, 5);
}

TEST_P(OutsideReaders, GiveTheWholeAnswerOrTheCodeOfAReadThatFails)
{
    const std::string whole = GetParam().answer(db);
    int failures = 0;
    bool met = true;
    for (int at = 1; met; ++at) {
        OpenAnew();
        outside::Ask(sql.Handle(),
                     "SELECT count(*) FROM sqlite_master"); // the engine's own start is not meant
        Told();
        std::string answer;
        {
            const CFailingFile failing(sql.Handle(), CFailingFile::eReads, at);
            answer = GetParam().answer(db);
            met = CFailingFile::Failed();
        }
        failures += ExpectWholeOr("17310", whole, answer, at) ? 0 : 1;
    }
    EXPECT_GT(failures, 1);
}

TEST_P(OutsideReaders, GiveTheWholeAnswerOrTheCodeOfADamagedPage)
{
    const std::string whole = GetParam().answer(db);
    const int pages = std::stoi(outside::Ask(sql.Handle(), "PRAGMA page_count"));
    std::string content(static_cast<std::size_t>(pages) * kPageSize, '\0');
    const auto bytes = static_cast<std::streamsize>(content.size());
    sql.Close();
    std::ifstream(file.Name(), std::ios::binary).read(content.data(), bytes);
    int failures = 0;
    for (int page = 2; page <= pages; ++page) { // the first says what kind of file it is
        std::string damaged = content;
        damaged.replace(static_cast<std::size_t>(page - 1) * kPageSize, kPageSize, kPageSize, '\xEE');
        std::ofstream(file.Name(), std::ios::binary).write(damaged.data(), bytes);
        OpenAnew();
        Told();
        failures += ExpectWholeOr("17311", whole, GetParam().answer(db), page) ? 0 : 1;
        sql.Close();
    }
    EXPECT_GT(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(HardFailures, OutsideReaders, testing::ValuesIn(Readers()), SCallName());

std::vector<SCall> Writers()
{
    return {
        {"AddRecord",
         [](CDerivedDB& db) {
             unsigned long oid = 0;
             return Code(db.AddRecord(1000, oid, {Data(1, Number(5)), Data(2, Text(L"new"))}, false));
         },
         ""},
        {"SetRecord",
         [](CDerivedDB& db) { return Code(db.SetRecord(1000, 3, {Data(2, Text(std::wstring(600, L'y')))})); },
         ""},
        {"TableAddColumn",
         [](CDerivedDB& db) {
             CQelTable::SQelColumn column = Column(L"c");
             column.description = std::wstring(600, L'd');
             return Code(db.TableAddColumn(1000, column));
         },
         ""},
        {"TableRemoveColumn", [](CDerivedDB& db) { return Code(db.TableRemoveColumn(1000, 2)); }, ""},
        {"RemoveTable", [](CDerivedDB& db) { return Code(db.RemoveTable(1000)); }, ""}};
}

class OutsideWriters : public OutsideFile
{};

TEST_P(OutsideWriters, LeaveNothingHalfWrittenWhenTheFileFails)
{
    const std::string before = Stored();
    int failures = 0;
    bool met = true;
    for (int at = 1; met; ++at) {
        Told();
        std::string answer;
        {
            const CFailingFile failing(sql.Handle(), CFailingFile::eChanges, at);
            answer = GetParam().answer(db);
            met = CFailingFile::Failed();
        }
        if (answer == "10001")
            break;
        ++failures;
        ExpectWholeOr("17310", "10001", answer, at);
        EXPECT_EQ(Stored(), before) << "at " << at;
        EXPECT_NE(sqlite3_get_autocommit(sql.Handle()), 0) << "at " << at;
        OpenAnew();
        EXPECT_EQ(Stored(), before) << "and in the file, at " << at;
    }
    EXPECT_GT(failures, 1);
    EXPECT_NE(Stored(), before);
    EXPECT_EQ(outside::Ask(sql.Handle(), "PRAGMA integrity_check"), "ok");
}

INSTANTIATE_TEST_SUITE_P(HardFailures, OutsideWriters, testing::ValuesIn(Writers()), SCallName());

TEST_F(OutsideFile, ThatCannotBeReadHasNoRecords)
{
    OpenAnew();
    outside::Ask(sql.Handle(), "SELECT count(*) FROM sqlite_master");
    const CFailingFile failing(sql.Handle(), CFailingFile::eReads, 2);
    EXPECT_FALSE(db.HasRecord(1000, 3));
    EXPECT_EQ(Told(), "E 17310\n");
    EXPECT_TRUE(db.HasRecord(1000, 3));
}

} // namespace
