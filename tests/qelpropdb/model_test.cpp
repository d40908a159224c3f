// model_test.cpp: random operations on a database and on a simple model of it, compared after every step.
#include "model.h"

#include <random>

namespace {

using namespace qeltest;

constexpr unsigned long kTables[] = {1, 2, 3, 4, 1000, 99};
constexpr const wchar_t* kNames[] = {L"Lamps", L"Rooms", L"a",      L"b",    L"Gr\u00f6\u00dfe",
                                     L"",      L"a b",   L"\u65e5", L"A",    L"c",
                                     L"d",     L"1",     L"x_y",    L"tab\t"};

class Player
{
public:
    explicit Player(unsigned int seed) : m_dice(seed)
    {
        m_sql.Open(m_folder.Path(L"model.db"));
        m_sql.ExecSQL(L"PRAGMA synchronous=OFF");
        m_db.Attach(true, nullptr);
        m_db.Close();
        m_db.Attach(false, nullptr);
        m_db.SetNotifyCallback(&CRecordingNotifier::Notify, 0);
    }

    void Play(int steps)
    {
        for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            m_notifier.Forget();
            Step();
            if (step % 20 == 0)
                CompareAll();
        }
        if (m_inTransaction)
            EndTransaction(true);
        CompareAll();
        EXPECT_GT(m_changes, steps / 4) << "the play must not run dry";
    }

private:
    unsigned int Roll(unsigned int sides) { return static_cast<unsigned int>(m_dice() % sides); }
    unsigned long AnyTable()
    {
        if (m_model.tables.empty() || Roll(5) == 0)
            return kTables[Roll(6)];
        return std::next(m_model.tables.begin(), Roll(static_cast<unsigned int>(m_model.tables.size())))
            ->first;
    }
    unsigned long AnyColumn() { return Roll(12); }
    unsigned long AnyRecord() { return Roll(8); }
    std::wstring AnyName() { return kNames[Roll(14)]; }

    CQelProperty AnyValue()
    {
        switch (Roll(6)) {
        case 0:
            return CQelProperty();
        case 1:
            return Text(std::wstring(Roll(40), L'\u00e4'));
        case 2:
            return Amount(Roll(1000), L"EUR");
        case 3:
            return Double(Roll(1000) / 8.0);
        case 4:
            return Blob(std::string(Roll(300), '\0'));
        default:
            return Int(static_cast<int>(Roll(50)));
        }
    }

    TRecord AnyValues()
    {
        TRecord values(Roll(5));
        for (SQelPropColumnData& data : values)
            data = Value(AnyColumn(), AnyValue());
        return values;
    }

    CQelTable::SQelColumn AnyColumnDefinition()
    {
        const int order = Roll(4) == 0 ? 9999 : static_cast<int>(Roll(5)) - 1;
        CQelTable::SQelColumn column = Column(AnyName(), static_cast<CQelProperty::EType>(Roll(3)), order);
        column.oid = Roll(3) == 0 ? AnyColumn() : 0;
        return column;
    }

    void Step()
    {
        switch (Roll(40)) {
        case 0:
            return AddTable();
        case 1:
            return Roll(3) == 0 ? RemoveTable() : AddTable();
        case 2:
            return RenameTable();
        case 3:
        case 4:
            return AddColumn();
        case 5:
            return RemoveColumn();
        case 6:
            return ModifyColumn();
        case 7:
            return RenameColumn();
        case 8:
            return Swap();
        case 9:
            return m_inTransaction ? EndTransaction(Roll(2) == 0) : Reopen();
        case 10:
            return m_inTransaction ? EndTransaction(Roll(2) == 0) : BeginTransaction();
        case 11:
            return CompareBulk();
        case 12:
            return CompareListing();
        default:
            return ChangeOrReadRecord();
        }
    }

    void Expect(unsigned int code, unsigned int modelled, const std::string& message)
    {
        m_changes += code == 10001 ? 1 : 0;
        EXPECT_EQ(code, modelled);
        EXPECT_EQ(m_notifier.Text(), modelled == 10001 ? message : "");
    }

    static std::string Message(int kind, unsigned long table, unsigned long record = 0)
    {
        return std::to_string(kind) + "(" + std::to_string(table) + "," + std::to_string(record) + ")";
    }

    void AddTable()
    {
        CQelTable table = TableOf(AnyName(), {}, Roll(2) == 0 ? kTables[Roll(6)] : 0);
        for (unsigned int i = Roll(3); i > 0; --i)
            table.Properties().columns.push_back(AnyColumnDefinition());
        unsigned long oid = 0;
        const unsigned int modelled = m_model.AddTable(table, oid);
        Expect(m_db.AddTable(table), modelled, Message(2, oid));
        EXPECT_EQ(table.Properties().oid, oid);
    }

    void RemoveTable()
    {
        const unsigned long table = AnyTable();
        Expect(m_db.RemoveTable(table), m_model.RemoveTable(table), Message(4, table));
    }

    void RenameTable()
    {
        const unsigned long table = AnyTable();
        const std::wstring name = AnyName();
        Expect(m_db.RenameTable(table, name), m_model.RenameTable(table, name), Message(3, table));
    }

    void AddColumn()
    {
        const unsigned long table = AnyTable();
        CQelTable::SQelColumn column = AnyColumnDefinition();
        const unsigned int modelled = m_model.AddColumn(table, column);
        Expect(m_db.TableAddColumn(table, column), modelled, Message(3, table));
    }

    void RemoveColumn()
    {
        const unsigned long table = AnyTable();
        const unsigned long column = AnyColumn();
        Expect(m_db.TableRemoveColumn(table, column), m_model.RemoveColumn(table, column), Message(3, table));
    }

    void ModifyColumn()
    {
        const unsigned long table = AnyTable();
        CQelTable::SQelColumn column = AnyColumnDefinition();
        column.oid = AnyColumn();
        const unsigned int modelled = m_model.ModifyColumn(table, column);
        Expect(m_db.TableModifyColumn(table, column), modelled, Message(3, table));
    }

    void RenameColumn()
    {
        const unsigned long table = AnyTable();
        const unsigned long column = AnyColumn();
        const std::wstring name = AnyName();
        Expect(m_db.RenameColumn(table, column, name), m_model.RenameColumn(table, column, name),
               Message(3, table));
    }

    void Swap()
    {
        const unsigned long table = AnyTable();
        const unsigned long first = AnyColumn();
        const unsigned long second = AnyColumn();
        Expect(m_db.TableSwapDisplayOrder(table, first, second), m_model.Swap(table, first, second),
               Message(3, table));
    }

    void ChangeOrReadRecord()
    {
        const unsigned long table = AnyTable();
        const unsigned long record = AnyRecord();
        switch (Roll(5)) {
        case 0:
            return AddRecord(table, record, Roll(2) == 0);
        case 1:
            return SetRecord(table, record);
        case 2:
            m_model.RemoveRecord(table, record);
            return Expect(m_db.RemoveRecord(table, record), 10001, Message(7, table, record));
        default:
            return CompareRecord(table, record);
        }
    }

    void AddRecord(unsigned long table, unsigned long record, bool useGivenOid)
    {
        const TRecord values = AnyValues();
        const int kind = record != 0 ? 6 : 5;
        unsigned long modelledOid = useGivenOid ? record : 0;
        const unsigned int modelled = m_model.AddRecord(table, modelledOid, values);
        const unsigned int code = m_db.AddRecord(table, record, values, useGivenOid);
        Expect(code, modelled, Message(kind, table, modelledOid));
        EXPECT_EQ(record, modelledOid);
    }

    void SetRecord(unsigned long table, unsigned long record)
    {
        const TRecord values = AnyValues();
        unsigned long oid = record;
        const unsigned int modelled = m_model.AddRecord(table, oid, values);
        Expect(m_db.SetRecord(table, record, values), modelled, Message(record != 0 ? 6 : 5, table, oid));
    }

    std::string Read(unsigned long table, unsigned long record)
    {
        const unsigned int code = m_db.GetRecord(table, record, m_record);
        if (code != 10001)
            return std::to_string(code);
        std::string text;
        for (const SQelPropColumnData& data : m_record)
            text += (text.empty() ? "" : " ") + std::to_string(data.columnOid) + "=" + Show(data.value);
        return text;
    }

    void CompareRecord(unsigned long table, unsigned long record)
    {
        EXPECT_EQ(Read(table, record), m_model.Record(table, record));
        const bool stored = m_model.tables.count(table) != 0 && m_model.records[table].count(record) != 0;
        EXPECT_EQ(m_db.HasRecord(table, record), stored);
        unsigned int count = 0;
        EXPECT_EQ(m_db.GetRecordCount(table, count), 10001u);
        EXPECT_EQ(count, m_model.records[table].size());
    }

    void CompareListing()
    {
        const unsigned long table = AnyTable();
        const std::vector<CQelPropDB::SSortItem> sort = {{AnyColumn(), Roll(2) == 0},
                                                         {AnyColumn(), Roll(2) == 0}};
        TOids expected;
        for (const auto& [oid, row] : m_model.records[table])
            expected.push_back(oid);
        for (const auto* items : {&sort, static_cast<decltype(&sort)>(nullptr)}) {
            TOids oids;
            const unsigned int code = m_db.GetRecordOids(table, oids, items);
            EXPECT_EQ(code, m_model.tables.count(table) != 0 ? 10001u : 10020u);
            std::sort(oids.begin(), oids.end());
            EXPECT_EQ(oids, code == 10001 ? expected : TOids());
        }
    }

    // The cache shows a stored null under the type of its column: an empty value of that type.
    void CompareBulk()
    {
        const auto& cached = m_db.GetBulkRecords();
        if (m_model.tables.count(1000) == 0) {
            EXPECT_TRUE(cached.empty());
            return;
        }
        EXPECT_EQ(cached.size(), std::max<std::size_t>(1, m_model.records[1000].size()));
        for (const auto& [oid, record] : cached) {
            EXPECT_EQ(record.size(), m_model.tables[1000].columns.size());
            for (const SQelPropColumnData& data : record)
                CompareCached(oid, data);
        }
    }

    void CompareCached(unsigned long record, const SQelPropColumnData& data)
    {
        const CModel::TRow& row = m_model.records[1000][record];
        const auto stored = row.find(data.columnOid);
        if (stored == row.end()) {
            EXPECT_TRUE(data.value.IsNull());
        } else if (stored->second != "-") {
            EXPECT_EQ(Show(data.value), stored->second);
        } else {
            EXPECT_EQ(data.value.GetType(), m_model.tables[1000].columns[data.columnOid].type);
        }
        if (row.empty())
            m_model.records[1000].erase(record);
    }

    void CompareAll()
    {
        EXPECT_EQ(DumpDefinitions(m_db), m_model.Definitions());
        for (const auto& [table, definition] : m_model.tables) {
            for (const auto& [record, row] : m_model.records[table])
                CompareRecord(table, record);
        }
        std::size_t values = 0;
        for (const auto& [table, rows] : m_model.records) {
            for (const auto& [record, row] : rows)
                values += row.size();
        }
        EXPECT_EQ(Rows(m_sql, "SELECT COUNT(*) FROM qeltpd"), std::to_string(values) + "\n");
    }

    void Reopen()
    {
        m_db.Close();
        if (Roll(2) == 0) {
            m_sql.Open(m_folder.Path(L"model.db"));
            m_sql.ExecSQL(L"PRAGMA synchronous=OFF");
        }
        if (Roll(20) == 0) {
            EXPECT_EQ(m_db.Attach(false, nullptr), 10001u);
            EXPECT_EQ(m_db.CreateLookupIndexes(), 10001u);
        }
        EXPECT_EQ(m_db.Attach(false, nullptr), 10001u);
        m_model.Repair();
    }

    void BeginTransaction()
    {
        m_before = m_model;
        m_inTransaction = Execute(m_sql, "BEGIN");
        EXPECT_TRUE(m_inTransaction);
    }

    // After the host rolls its own transaction back, the catalogue is read anew.
    void EndTransaction(bool commit)
    {
        EXPECT_TRUE(Execute(m_sql, commit ? "COMMIT" : "ROLLBACK"));
        m_inTransaction = false;
        if (commit)
            return;
        m_model = m_before;
        EXPECT_EQ(m_db.Attach(false, nullptr), 10001u);
        m_model.Repair();
    }

    std::mt19937 m_dice;
    CTemporaryFolder m_folder;
    CRecordingNotifier m_notifier;
    CQelSQLite m_sql;
    CQelPropDB m_db{&m_sql};
    CModel m_model;
    CModel m_before;
    bool m_inTransaction = false;
    int m_changes = 0;
    TRecord m_record; // used again and again, as hosts do
};

class RandomOperations : public testing::TestWithParam<unsigned int>
{};

TEST_P(RandomOperations, AnswerAndStoreAsTheModelDoes)
{
    Player(GetParam()).Play(3000);
}

INSTANTIATE_TEST_SUITE_P(Model, RandomOperations, testing::Range(1u, 9u));

} // namespace
