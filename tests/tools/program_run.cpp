// program_run.cpp: streams and folder for runs of the program.
#include "program_run.h"

#include <algorithm>
#include <array>
#include <map>

namespace qeltest {
namespace {

bool EndsIn(const std::string& text, const std::string& end)
{
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool IsFileName(const std::string& word)
{
    constexpr std::array<const char*, 4> kEnds = {".db", ".store", ".csv", ".bin"};
    return std::any_of(kEnds.begin(), kEnds.end(), [&](const char* end) { return EndsIn(word, end); });
}

std::vector<std::string> Words(const std::string& arguments)
{
    std::istringstream stream(arguments);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

} // namespace

void CProgram::Answer(const std::string& text)
{
    m_answer = text;
    m_terminal = true;
}

SRun CProgram::Run(const std::string& arguments)
{
    std::vector<std::string> words = Words(arguments);
    for (std::string& word : words) {
        const std::size_t behind = word.find("@=") == std::string::npos ? 0 : word.find("@=") + 2;
        if (IsFileName(word))
            word.insert(behind, m_folder.Root().u8string() + "/");
    }
    return RunWords(words);
}

SRun CProgram::RunWords(const std::vector<std::string>& arguments, const std::string& input)
{
    std::istringstream in(m_terminal ? m_answer : input);
    std::ostringstream out;
    std::ostringstream err;
    const tool::SSurroundings surroundings{in, out, err, m_terminal, m_columns != 0, m_terminal, m_columns};
    SRun run;
    run.exit = tool::RunProgram(arguments, surroundings);
    run.out = out.str();
    run.err = err.str();
    return run;
}

int CKeptRuns::Run(const std::vector<std::string>& arguments, const std::string& input)
{
    const SRun run = program.RunWords(arguments, input);
    m_out = run.out;
    m_err = run.err;
    return run.exit;
}

void BothKinds::SetUp()
{
    // Made once for each kind: what follows is copies, each command being a run with its own flush to disk.
    static std::map<std::string, std::string> made;
    std::string& bytes = made[GetParam()];
    if (bytes.empty()) {
        MakeCars();
        bytes = Bytes();
    }
    WriteFile(program.File(L"cars.db"), bytes);
}

void BothKinds::MakeCars()
{
    Out(std::string("init cars.db --format ") + GetParam());
    Out("add-table cars.db Makers Name:string Country:string");
    Out("add-table cars.db Cars Model:string Price:currency:EUR Fast:boolean=false "
        "Maker:reference:Makers.Name");
    Out("add cars.db Makers --oid 1 Name=DKW Country=Germany");
    Out("add cars.db Makers --oid 2 Name=Saab Country=Sweden");
    Out("add cars.db Makers --oid 3 Name=Volvo Country=Sweden");
    Out("add cars.db Cars --oid 1 Model=96 Price=1900.5 Maker=@2");
    Out("add cars.db Cars --oid 2 Model=Sonett Price=5400 Fast=true Maker=@2");
    Out("add cars.db Cars --oid 7 Model=Duett Maker=@3");
}

std::string BothKinds::Out(const std::string& arguments)
{
    const SRun run = Run(arguments);
    EXPECT_EQ(run.exit, 0) << arguments << '\n' << run.err;
    return run.out;
}

std::string BothKinds::Refusal(const std::string& arguments)
{
    const SRun run = Run(arguments);
    EXPECT_EQ(run.out, "") << arguments;
    std::string line = run.err.substr(0, run.err.find('\n'));
    const std::string folder = program.File(L"").u8string();
    for (std::size_t at = line.find(folder); at != std::string::npos; at = line.find(folder))
        line.erase(at, folder.size());
    return std::to_string(run.exit) + " " + line;
}

std::string KindName(const testing::TestParamInfo<const char*>& kind)
{
    return kind.param;
}

} // namespace qeltest
