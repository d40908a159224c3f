// import_command.cpp: the command import.
#include "exchange_commands.h"

#include "cli/failure_text.h"
#include "importer.h"
#include "input.h"
#include "output/amount_text.h"
#include "output/output.h"
#include "output/progress.h"
#include "output/row_writer.h"

namespace tool {
namespace {

EFormat FormatOf(const CContext& context, const std::string& name)
{
    const auto endsWith = [&](const std::string& end) {
        return name.size() > end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0;
    };
    EFormat usual = EFormat::eCsv;
    if (endsWith(".tsv"))
        usual = EFormat::eTsv;
    else if (endsWith(".jsonl") || endsWith(".ndjson"))
        usual = EFormat::eJsonLines;
    else if (endsWith(".json"))
        usual = EFormat::eJson;
    const EFormat format = context.Format(usual);
    if (format == EFormat::eTable || format == EFormat::ePlain)
        throw UsageFailure("import reads csv, tsv, json and jsonl alone");
    return format;
}

SSourceRules SourceRulesOf(const CContext& context, const CNames& names, const CQelTable& table)
{
    const CArguments& arguments = context.Arguments();
    SSourceRules rules;
    rules.names = &names;
    rules.table = &table;
    rules.header = !arguments.Has("--no-header");
    rules.regional = context.IsRegional();
    rules.takeOids = !arguments.Has("--new-oids");
    rules.separator = SeparatorOf(arguments);
    if (arguments.Has("--null"))
        rules.null = arguments.Text("--null");
    for (const std::string& given : arguments.All("--map")) {
        const std::size_t equals = given.rfind('=');
        if (equals == std::string::npos)
            throw UsageFailure("--map: '" + given + "' is no NAME=COLUMN",
                               "NAME= passes over what the file holds under that name");
        rules.renamed[given.substr(0, equals)] = given.substr(equals + 1);
    }
    return rules;
}

CImporter::SRules ImportRulesOf(const CContext& context, const CNames& names, const CQelTable& table)
{
    CImporter::SRules rules;
    const std::string key = context.Arguments().Text("--key");
    rules.keyIsOid = key == "@oid";
    if (!key.empty() && !rules.keyIsOid)
        rules.keyColumn = names.Column(table, key).oid;
    if (context.Arguments().Has("--rejects") && context.Arguments().Text("--on-error") != "skip")
        throw UsageFailure("--rejects wants --on-error skip", "else the first such record ends the import");
    rules.defaults = !context.Arguments().Has("--no-defaults");
    return rules;
}

/// What becomes of refused records: a line on stderr for each of the first ones, and a file in the form of
/// the input, so that it can be mended and read again.
class CRejects
{
public:
    explicit CRejects(CContext& context) : m_context(context)
    {
        if (context.Arguments().Has("--rejects"))
            m_file.emplace(context, "--rejects");
    }

    void Put(const SFailure& failure, const CRecordSource& source, const SSourceRecord& record)
    {
        constexpr unsigned long long kTold = 20;
        if (++m_count <= kTold && !m_context.IsQuiet())
            m_context.Err() << FailureText(failure, m_context.Format() == EFormat::eJson);
        if (!m_file)
            return;
        if (m_count == 1 && !source.Header().empty())
            m_file->Stream() << source.Header() << '\n';
        m_file->Stream() << source.Raw(record) << '\n';
    }

    void Finish()
    {
        if (m_file)
            m_file->Finish();
    }
    unsigned long long Count() const { return m_count; }

private:
    CContext& m_context;
    std::optional<COutput> m_file;
    unsigned long long m_count = 0;
};

/// Reads on, naming the file where reading fails.
bool ReadNext(CRecordSource& source, SSourceRecord& record, const std::string& fileName)
{
    try {
        return source.Next(record);
    } catch (SFailure& failure) {
        if (failure.file.empty())
            failure.file = fileName;
        if (record.number != 0)
            failure.message = "behind record " + GroupedText(record.number) + ": " + failure.message;
        failure.message += "; nothing was imported";
        throw;
    }
}

/// Puts every record. @return how many were refused
unsigned long long PutAll(CContext& context, CRecordSource& source, CImporter& importer, const CInput& input)
{
    const bool skip = context.Arguments().Text("--on-error", "stop") == "skip";
    CRejects rejects(context);
    CProgress progress(context, "importing", "bytes", input.Size());
    SSourceRecord record;
    while (ReadNext(source, record, input.Name())) {
        progress.Step(source.BytesRead());
        try {
            importer.Put(record);
        } catch (SFailure& failure) {
            if (failure.line == 0) // of the database, which is the same for every record
                throw;
            failure.file = input.Name();
            if (record.number != 0)
                failure.message = "record " + GroupedText(record.number) + ": " + failure.message;
            if (!skip) {
                failure.message += "; nothing was imported";
                throw;
            }
            rejects.Put(failure, source, record);
        }
    }
    rejects.Finish();
    return rejects.Count();
}

} // namespace

EExit RunImport(CContext& context)
{
    CInput input(context);
    const EFormat format = FormatOf(context, input.Name());
    const std::unique_ptr<CPropertyFile> file = context.OpenFile(EAccess::eWrite);
    const CNames names(*file);
    const CQelTable& table = names.Table(context.Arguments().Text("TABLE"));
    SSourceRules rules = SourceRulesOf(context, names, table);
    rules.fileName = input.Name();
    CImporter importer(*file, table, ImportRulesOf(context, names, table));
    const std::unique_ptr<CRecordSource> source = CRecordSource::Make(format, input.Stream(), rules);
    const unsigned long long refused = PutAll(context, *source, importer, input);
    const unsigned long long dangling = importer.Dangling();
    context.Finish(*file);
    const bool dry = context.IsDryRun();
    context.Tell((dry ? "would have imported " : "imported ") + Counted(importer.Added(), "record") +
                 ", replaced " + GroupedText(importer.Replaced()) + ", refused " + GroupedText(refused));
    if (dangling > 0)
        context.Tell(Counted(dangling, "reference") + (dangling == 1 ? " leads" : " lead") +
                     " to no record; 'qelprop check' lists what dangles");
    return EExit::eDone;
}

} // namespace tool
