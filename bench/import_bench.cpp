// import_bench.cpp: what an import costs beside a host that adds the same records in one transaction of its
// own.
//
// Both run as processes of their own, on a file each, so that the peak of their memory (peak_MiB) is theirs
// alone.
#include <benchmark/benchmark.h>
#include <qelprop4/qelprop4.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

namespace {

namespace fs = std::filesystem;

/// A folder of this run, removed at its end. Not copied.
class CFolder
{
public:
    CFolder()
        : m_path(fs::temp_directory_path() /
                 ("qelprop-bench-" + std::to_string(static_cast<long>(getpid())))),
          m_owner(getpid())
    {
        fs::create_directories(m_path);
    }
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;
    ~CFolder()
    {
        std::error_code error;
        if (getpid() == m_owner)
            fs::remove_all(m_path, error);
    }
    fs::path File(const std::string& name) const { return m_path / name; }

private:
    fs::path m_path;
    pid_t m_owner;
};

const CFolder& Folder()
{
    static const CFolder folder;
    return folder;
}

constexpr const char* kColumns[] = {"Number:integer", "Name:string", "Size:integer64", "Kept:boolean",
                                    "Site:hyperlink", "Day:date",    "Price:currency", "Share:double"};
constexpr const char* kHeader = "Number,Name,Size,Kept,Site,Day,Price,Share\n";
constexpr const char* kSite = "https://packages.example.org/";
constexpr int kDays = 365;
constexpr int kFirstDay = 36526; // 2000-01-01

int NumberOf(long row)
{
    return static_cast<int>(row * 7919 % 100003);
}

void WriteRow(std::ostream& out, long row)
{
    static constexpr int kMonthDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int month = 0;
    auto day = static_cast<int>(row % kDays);
    for (; day >= kMonthDays[month]; ++month)
        day -= kMonthDays[month];
    char text[256];
    std::snprintf(text, sizeof text, "%d,package-%ld,%lld,%s,%s,2000-%02d-%02d,%ld.%02ld00 EUR,%.17g\n",
                  NumberOf(row), row % 1000, row * 4096LL, row % 2 == 0 ? "true" : "false", kSite, month + 1,
                  day + 1, row / 100, row % 100, static_cast<double>(row) / 3);
    out << text;
}

/// The same rows as text, made once for each number.
const std::string& RowsFile(long rows)
{
    static std::map<long, std::string> made;
    std::string& name = made[rows];
    if (name.empty()) {
        name = Folder().File(std::to_string(rows) + ".csv").string();
        std::ofstream file(name, std::ios::binary);
        file << kHeader;
        for (long row = 0; row < rows; ++row)
            WriteRow(file, row);
    }
    return name;
}

/// Runs in another process. @return whether it ended well; the peak of its memory is added to the counter
template <class Work>
bool RunApart(benchmark::State& state, const Work& work)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    rusage used{};
    const bool ended =
        wait4(child, &status, 0, &used) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    constexpr double kKiBInMiB = 1024.0;
    state.counters["peak_MiB"] = static_cast<double>(used.ru_maxrss) / kKiBInMiB;
    if (!ended)
        state.SkipWithError("the process failed");
    return ended;
}

int RunQelprop(std::vector<std::string> arguments)
{
    if (std::freopen("/dev/null", "w", stdout) == nullptr) // the oid of the new table
        return 1;
    arguments.insert(arguments.begin(), {QELPROP_PROGRAM, "-q"});
    std::vector<char*> words;
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    execv(words.front(), words.data());
    return 127;
}

/// An empty table in a file, as every case begins.
std::string FreshFile(benchmark::State& state)
{
    const std::string empty = Folder().File("empty.db").string();
    const std::string name = Folder().File("rows.db").string();
    if (!fs::exists(empty)) {
        RunApart(state, [&] { return RunQelprop({"init", empty}); });
        std::vector<std::string> table = {"add-table", empty, "Packages"};
        table.insert(table.end(), std::begin(kColumns), std::end(kColumns));
        RunApart(state, [&] { return RunQelprop(table); });
    }
    fs::copy_file(empty, name, fs::copy_options::overwrite_existing);
    return name;
}

void ImportByProgram(benchmark::State& state)
{
    const std::string rows = RowsFile(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const std::string file = FreshFile(state);
        state.ResumeTiming();
        RunApart(state, [&] { return RunQelprop({"import", file, "Packages", rows}); });
    }
}

std::vector<SQelPropColumnData> RecordOf(long row, unsigned long firstColumn)
{
    constexpr int kNoBias = 9999;
    std::vector<SQelPropColumnData> record(std::size(kColumns));
    for (std::size_t index = 0; index < record.size(); ++index)
        record[index].columnOid = firstColumn + index;
    record[0].value.SetInt(NumberOf(row));
    record[1].value.SetString(L"package-" + std::to_wstring(row % 1000));
    record[2].value.SetInt64(row * 4096LL);
    record[3].value.SetBool(row % 2 == 0);
    record[4].value.SetURL(L"https://packages.example.org/");
    record[5].value.SetDate(static_cast<double>(kFirstDay + row % kDays), kNoBias);
    record[6].value.SetCurrency(static_cast<double>(row) / 100, L"EUR");
    record[7].value.SetDouble(static_cast<double>(row) / 3);
    return record;
}

int AddAsHost(const std::string& file, long rows)
{
    CQelSQLite connection;
    connection.Open(fs::path(file).wstring());
    CQelPropDB db(&connection);
    std::vector<unsigned long> tables;
    if (db.Attach(false, nullptr) != qel::kSuccess || db.GetTables(tables) != qel::kSuccess || tables.empty())
        return 1;
    CQelTable table(tables.front());
    db.GetTable(table);
    connection.ExecSQL(L"BEGIN IMMEDIATE");
    for (long row = 0; row < rows; ++row) {
        unsigned long oid = 0;
        if (db.AddRecord(tables.front(), oid, RecordOf(row, table.Columns().front().oid), false) !=
            qel::kSuccess)
            return 1;
    }
    connection.ExecSQL(L"COMMIT");
    return 0;
}

void ImportByHost(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const std::string file = FreshFile(state);
        state.ResumeTiming();
        RunApart(state, [&] { return AddAsHost(file, state.range(0)); });
    }
}

constexpr long kFew = 10000;
constexpr long kUsual = 100000;
constexpr long kMany = 1000000;

BENCHMARK(ImportByProgram)
    ->Name("ImportOfRowsOf8Columns/library")
    ->Arg(kFew)
    ->Arg(kUsual)
    ->Arg(kMany)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ImportByHost)
    ->Name("ImportOfRowsOf8Columns/raw")
    ->Arg(kFew)
    ->Arg(kUsual)
    ->Arg(kMany)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
