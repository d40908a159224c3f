// catalogue_host.cpp: a small host that keeps the packages of its machine in a property database.
//
// The first run makes the database and stores every package; a later run finds them as they were.
#include "catalogue.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

constexpr std::size_t kRowsShown = 20;

struct SOptions
{
    std::filesystem::path folder = ".";
    std::string status = "/var/lib/dpkg/status";
};

SOptions ReadOptions(int count, char** arguments)
{
    SOptions options;
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string name = arguments[i];
        if (name == "--folder")
            options.folder = arguments[i + 1];
        else if (name == "--status")
            options.status = arguments[i + 1];
        else
            throw std::runtime_error("unknown option " + name);
    }
    if (count % 2 == 0)
        throw std::runtime_error("usage: catalogue_host [--folder FOLDER] [--status FILE]");
    return options;
}

/// Measures from its making.
class CStopwatch
{
public:
    /// "12.3 ms"
    std::string Text() const
    {
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - m_start;
        char text[32];
        std::snprintf(text, sizeof text, "%.1f ms", taken.count());
        return text;
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

void RequireOpen(int raw, const std::filesystem::path& path)
{
    Require(CQelSQLite::MapQelERR(raw), "opening " + path.string());
}

// One transaction of the host's around everything: the file is synced once, and a failure leaves it empty.
void Fill(const std::filesystem::path& path, const std::vector<SPackage>& packages)
{
    CQelSQLite connection;
    RequireOpen(connection.Open(path.wstring()), path);
    CSQLiteTransaction transaction(&connection, false);
    if (!transaction.BeginTrans())
        throw std::runtime_error("the database could not be locked");

    const CStopwatch watch;
    CQelPropDB db(&connection);
    Require(db.Attach(true, nullptr), "making the database");
    Require(db.CreateLookupIndexes(), "adding the indexes");
    CSqlCatalogue catalogue(db);
    catalogue.Define();
    catalogue.Store(packages);
    if (!transaction.Commit())
        throw std::runtime_error("the transaction could not be committed");
    std::cout << "Stored " << catalogue.CountPackages() << " packages in " << catalogue.CountSections()
              << " sections in one transaction: " << watch.Text() << "\n";
}

// Says whether the stored packages are those of the list. False when any differs.
bool Verify(CSqlCatalogue& catalogue, const std::vector<SPackage>& packages)
{
    const CStopwatch watch;
    const std::size_t differing = catalogue.CountDiffering(packages);
    if (differing == 0 && catalogue.CountPackages() == packages.size()) {
        std::cout << "Found all " << packages.size() << " packages as they were: " << watch.Text() << "\n";
        return true;
    }
    std::cout << "Found " << catalogue.CountPackages() << " packages; " << differing << " of the "
              << packages.size() << " in the list are missing or differ\n";
    return false;
}

void ShowLargest(CSqlCatalogue& catalogue)
{
    const CStopwatch watch;
    std::vector<unsigned long> oids = catalogue.OidsBySize();
    std::cout << "Sorted " << oids.size() << " packages by size and name: " << watch.Text() << "\n\n";
    if (oids.size() > kRowsShown)
        oids.resize(kRowsShown);
    catalogue.Print(oids, std::cout);
}

int Run(const SOptions& options)
{
    const std::vector<SPackage> packages = ReadPackageList(options.status);
    const std::filesystem::path path = options.folder / "catalogue.db";
    if (std::filesystem::exists(path))
        std::cout << "Reopening " << path.string() << "\n";
    else
        Fill(path, packages);

    CQelSQLite connection;
    RequireOpen(connection.Open(path.wstring()), path);
    CQelPropDB db(&connection);
    Require(db.Attach(false, nullptr), "reading the database");
    CSqlCatalogue catalogue(db);
    catalogue.Find();
    const bool same = Verify(catalogue, packages);
    ShowLargest(catalogue);
    return same ? 0 : 1;
}

} // namespace

int main(int count, char** arguments)
{
    try {
        return Run(ReadOptions(count, arguments));
    } catch (const std::exception& fault) {
        std::cerr << "catalogue_host: " << fault.what() << "\n";
        return 1;
    }
}
