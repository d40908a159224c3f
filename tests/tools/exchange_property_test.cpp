// exchange_property_test.cpp: random records of every type through files and back.
#include "cli/program.h"
#include "exchange/json_value.h"
#include "exchange/neutral_text.h"
#include "exchange/value_parts.h"
#include "random_values.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <qelplat4/utf16.h>

#include <sstream>

using namespace qeltest;

namespace {

using EType = CQelProperty::EType;

struct SRun
{
    int status;
    std::string err;
};

SRun Run(const std::vector<std::string>& arguments)
{
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    const int status = tool::RunProgram(arguments, {in, out, err});
    return {status, err.str()};
}

constexpr unsigned long kNoOid = 0;

/// A file of either kind with one table that has a column of each type, and as many records as asked for.
class CRandomFile
{
public:
    explicit CRandomFile(tool::EKind kind, std::size_t records, ETexts texts) : m_kind(kind)
    {
        const auto file = Create("a");
        const CQelTable table = file->Tables().front();
        tool::CRecord record;
        for (std::size_t count = 0; count < records; ++count) {
            record.clear();
            for (const CQelTable::SQelColumn& column : table.Columns())
                record.push_back({column.oid, RandomValue(column.type, texts)});
            file->AddRecord(table.Properties().oid, record, kNoOid);
        }
        file->Commit();
    }

    std::string Path(const std::string& name) const
    {
        return qel::ToUtf8(m_folder.Path(qel::FromUtf8(name)));
    }

    /// A file with the table and no records.
    std::unique_ptr<tool::CPropertyFile> Create(const std::string& name) const
    {
        auto file = tool::CPropertyFile::Create(m_folder.Path(qel::FromUtf8(name)), m_kind, true, false,
                                                {tool::EAccess::eWrite, 0, nullptr});
        CQelTable table;
        table.Properties().name = L"All";
        for (int type = EType::eString; type <= EType::eDateTime; ++type) {
            CQelTable::SQelColumn column;
            column.name = L"Column" + std::to_wstring(type);
            column.type = static_cast<EType>(type);
            table.Properties().columns.push_back(column);
        }
        file->AddTable(table);
        return file;
    }

private:
    tool::EKind m_kind;
    CTemporaryFolder m_folder;
};

/// True for one case in five: each waits for the disk some ten times.
bool IsTurn()
{
    static unsigned turn = 0;
    return turn++ % 5 == 0;
}

tool::EKind RandomKind()
{
    return *rc::gen::element(tool::EKind::eSQLite, tool::EKind::eLegacy);
}

void ExpectThrough(const std::string& format, ETexts texts)
{
    if (!IsTurn())
        return;
    const CRandomFile files(RandomKind(), *rc::gen::inRange<std::size_t>(0, 5), texts);
    files.Create("b")->Commit();
    const SRun out = Run({"export", files.Path("a"), "All", "-o", format, "-O", files.Path("x")});
    RC_ASSERT(out.err == "");
    const SRun in = Run({"import", files.Path("b"), "All", files.Path("x"), "-o", format, "-q"});
    RC_ASSERT(in.err == "");
    RC_ASSERT(Run({"compare", files.Path("a"), files.Path("b")}).status == 0);
}

RC_GTEST_PROP(Exchange, RecordsSurviveCsv, ())
{
    ExpectThrough("csv", ETexts::eWellFormed);
}

RC_GTEST_PROP(Exchange, RecordsSurviveTsv, ())
{
    ExpectThrough("tsv", ETexts::eWellFormed);
}

RC_GTEST_PROP(Exchange, RecordsSurviveJson, ())
{
    ExpectThrough("json", ETexts::eAny);
}

RC_GTEST_PROP(Exchange, RecordsSurviveJsonLines, ())
{
    ExpectThrough("jsonl", ETexts::eAny);
}

RC_GTEST_PROP(Exchange, DatabasesSurviveDumpAndLoad, ())
{
    if (!IsTurn())
        return;
    const CRandomFile files(RandomKind(), *rc::gen::inRange<std::size_t>(0, 5), ETexts::eAny);
    RC_ASSERT(Run({"dump", files.Path("a"), "-O", files.Path("x")}).status == 0);
    RC_ASSERT(Run({"load", files.Path("b"), files.Path("x")}).status == 0);
    RC_ASSERT(Run({"compare", files.Path("a"), files.Path("b")}).status == 0);
}

RC_GTEST_PROP(Exchange, DatabasesSurviveMigrationBothWays, ())
{
    if (!IsTurn())
        return;
    const CRandomFile files(RandomKind(), *rc::gen::inRange<std::size_t>(0, 5), ETexts::eAny);
    RC_ASSERT(Run({"migrate", files.Path("a"), files.Path("b")}).status == 0);
    RC_ASSERT(Run({"migrate", files.Path("b"), files.Path("c")}).status == 0);
    RC_ASSERT(Run({"compare", files.Path("a"), files.Path("c")}).status == 0);
}

RC_GTEST_PROP(NeutralText, EveryValueSurvives, ())
{
    const EType type = RandomType();
    const CQelProperty value = RandomValue(type, ETexts::eWellFormed);
    if (value.IsNull())
        return;
    CQelProperty back;
    std::string error;
    RC_ASSERT(tool::FromNeutralText(tool::ToNeutralText(value), type, back, error));
    RC_ASSERT(tool::IsSameValue(back, value));
}

RC_GTEST_PROP(JsonValue, EveryValueSurvives, ())
{
    const EType type = RandomType();
    const CQelProperty value = RandomValue(type, ETexts::eAny);
    nlohmann::json json;
    CQelProperty back;
    std::string error;
    RC_ASSERT(tool::ParseJson(tool::ToJson(value).dump(), json, error));
    RC_ASSERT(tool::FromJson(json, type, back, error));
    RC_ASSERT(tool::IsSameValue(back, value));
}

} // namespace
