// program_run.h: runs of the program inside the test, in a folder of their own.
#pragma once

#include "cli/program.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace qeltest {

/// What one run has printed and answered.
struct SRun
{
    int exit = 0;
    std::string out;
    std::string err;
};

/// Runs the program with texts for streams and the neutral locale.
class CProgram
{
public:
    /// Text of the user's; with it the program believes that it is at a terminal.
    void Answer(const std::string& text);
    void SetScreen(int columns) { m_columns = columns; }

    /// @param arguments  in shell-like words parted by blanks; a name that ends in ".db", ".store", ".csv" or
    ///                   ".bin" is one of the folder's files, also behind "@="
    SRun Run(const std::string& arguments);
    /// @param input  what stands on standard input without a terminal
    SRun RunWords(const std::vector<std::string>& arguments, const std::string& input = {});

    std::filesystem::path File(const std::wstring& name) const { return m_folder.File(name); }
    std::string Names() const { return m_folder.Names(); }

private:
    CLocaleEnvironment m_locale{"C.UTF-8"};
    CTemporaryFolder m_folder;
    std::string m_answer;
    bool m_terminal = false;
    int m_columns = 0;
};

/// Runs the program and keeps what it has printed last.
class CKeptRuns
{
protected:
    int Run(const std::vector<std::string>& arguments, const std::string& input = {});
    std::string Path(const std::wstring& name) const { return program.File(name).u8string(); }

    CProgram program;
    std::string m_out;
    std::string m_err;
};

/// A test that runs on both kinds of file: the parameter is what --format takes.
class BothKinds : public testing::TestWithParam<const char*>
{
protected:
    /// Makes cars.db with the tables Makers (records 1 to 3) and Cars (records 1, 2 and 7).
    void SetUp() override;
    void MakeCars();

    SRun Run(const std::string& arguments) { return program.Run(arguments); }
    /// The output of a run that must end well.
    std::string Out(const std::string& arguments);
    /// Exit status and first line of stderr: "3 qelprop: ...", the file's folder left out.
    std::string Refusal(const std::string& arguments);
    std::string Bytes() const { return ReadFile(program.File(L"cars.db")); }

    CProgram program;
};

std::string KindName(const testing::TestParamInfo<const char*>& kind);

} // namespace qeltest
