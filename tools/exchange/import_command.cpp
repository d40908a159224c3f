// import_command.cpp: the command import.
#include "exchange_commands.h"

#include "importer.h"
#include "input.h"
#include "output/progress.h"

#include <qelplat4/native_path.h>

#include <fstream>

namespace tool {
namespace {

SFailure FileFailure(EExit exit, const std::string& file, const std::string& message)
{
    SFailure failure;
    failure.exit = exit;
    failure.file = file;
    failure.message = message;
    return failure;
}

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
    if (arguments.Has("--null"))
        rules.null = arguments.Text("--null");
    for (const std::string& given : arguments.All("--map")) {
        const std::size_t equals = given.rfind('=');
        if (equals == std::string::npos)
            throw UsageFailure("--map: '" + given + "' is no NAME=COLUMN");
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
    rules.defaults = !context.Arguments().Has("--no-defaults");
    return rules;
}

/// The file of refused records, in the form of the input, so that it can be mended and read again.
class CRejects
{
public:
    CRejects(const CContext& context, const CInput& input) : m_name(context.Arguments().Text("--rejects"))
    {
        if (m_name.empty())
            return;
        const std::filesystem::path path = qel::NativePath(Wide(m_name));
        std::error_code error;
        for (const std::string& other : {input.Name(), context.Arguments().Text("FILE")}) {
            if (std::filesystem::equivalent(path, qel::NativePath(Wide(other)), error))
                throw UsageFailure("--rejects names a file that is read: '" + m_name + "'");
        }
        m_file.open(path, std::ios::binary | std::ios::trunc);
        Check();
    }

    void Put(const std::string& header, const std::string& raw)
    {
        if (m_name.empty())
            return;
        if (!m_begun && !header.empty())
            m_file << header << '\n';
        m_begun = true;
        m_file << raw << '\n';
        Check();
    }

    void Finish()
    {
        if (m_name.empty())
            return;
        m_file.close();
        Check();
    }

private:
    void Check() const
    {
        if (!m_file)
            throw FileFailure(EExit::eFailed, m_name, "cannot write the rejects");
    }

    std::string m_name;
    std::ofstream m_file;
    bool m_begun = false;
};

/// Reads on, naming the file where reading fails.
bool ReadNext(CRecordSource& source, SSourceRecord& record, const std::string& fileName)
{
    try {
        return source.Next(record);
    } catch (SFailure& failure) {
        if (failure.file.empty())
            failure.file = fileName;
        failure.message += "; nothing was imported";
        throw;
    }
}

/// Puts every record. @return how many were refused
unsigned long long PutAll(CContext& context, CRecordSource& source, CImporter& importer, const CInput& input)
{
    const bool skip = context.Arguments().Text("--on-error", "stop") == "skip";
    CRejects rejects(context, input);
    CProgress progress(context, "importing", "bytes", input.Size());
    unsigned long long refused = 0;
    SSourceRecord record;
    while (ReadNext(source, record, input.Name())) {
        progress.Step(source.BytesRead());
        try {
            importer.Put(record);
        } catch (SFailure& failure) {
            if (failure.line == 0) // of the database, which is the same for every record
                throw;
            failure.file = input.Name();
            if (!skip) {
                failure.message += "; nothing was imported";
                throw;
            }
            ++refused;
            rejects.Put(source.Header(), source.Raw(record));
        }
    }
    rejects.Finish();
    return refused;
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
    context.Finish(*file);
    const bool dry = context.IsDryRun();
    context.Tell((dry ? "would have imported " : "imported ") + GroupedText(importer.Added()) +
                 (importer.Added() == 1 ? " record" : " records") + ", replaced " +
                 GroupedText(importer.Replaced()) + ", refused " + GroupedText(refused));
    return EExit::eDone;
}

} // namespace tool
