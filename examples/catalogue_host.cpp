// catalogue_host.cpp: a small host that keeps the packages of its machine in a property database.
//
// The first run makes the database and stores every package; a later run finds them as they were.
#include "catalogue.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

struct SOptions
{
    std::filesystem::path folder = ".";
    std::string status = "/var/lib/dpkg/status";
    std::size_t rows = 20; ///< of the table that is shown
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
        else if (name == "--rows")
            options.rows = std::stoul(arguments[i + 1]);
        else
            throw std::runtime_error("unknown option " + name);
    }
    if (count % 2 == 0)
        throw std::runtime_error("usage: catalogue_host [--folder FOLDER] [--status FILE] [--rows N]");
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

void RequireOpen(CQelSQLite& connection, const std::filesystem::path& path)
{
    Require(CQelSQLite::MapQelERR(connection.Open(path.wstring())), "opening " + path.string());
}

void TellStored(std::size_t packages, const std::filesystem::path& path, const CStopwatch& watch)
{
    std::cout << "Stored " << packages << " packages in " << path.filename().string() << ": " << watch.Text()
              << "\n";
}

// One transaction of the host's around everything: the file is synced once, and a failure leaves it empty.
void FillDatabase(const std::filesystem::path& path, const std::vector<SPackage>& packages)
{
    CQelSQLite connection;
    RequireOpen(connection, path);
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
    TellStored(packages.size(), path, watch);
}

// The same for the earlier format: one batch of its store.
void FillStore(const std::filesystem::path& path, const std::vector<SPackage>& packages)
{
    const CStopwatch watch;
    CQelPropDB3X db;
    Require(db.Create(path.wstring()), "making the store");
    CLegacyCatalogue catalogue(db);
    catalogue.Define();
    Require(db.BlobDB().BeginBatch(), "beginning a batch");
    catalogue.Store(packages);
    Require(db.BlobDB().CommitBatch(), "ending the batch");
    Require(db.Close(), "closing the store");
    TellStored(packages.size(), path, watch);
}

// Says whether the stored packages are those of the list. False when any differs.
template <class Catalogue>
bool Verify(Catalogue& catalogue, const std::vector<SPackage>& packages, const char* name)
{
    const CStopwatch watch;
    const std::size_t differing = catalogue.CountDiffering(packages);
    const bool same = differing == 0 && catalogue.CountPackages() == packages.size();
    if (same)
        std::cout << "Found all " << packages.size() << " packages as they were in " << name << ": "
                  << watch.Text() << "\n";
    else
        std::cout << "Found " << catalogue.CountPackages() << " packages in " << name << "; " << differing
                  << " of the " << packages.size() << " in the list are missing or differ\n";
    return same;
}

// Sorts both by size and name and compares them value by value.
bool AnswerAlike(CSqlCatalogue& database, CLegacyCatalogue& store)
{
    const std::vector<unsigned long> left = database.OidsBySize();
    const std::vector<unsigned long> right = store.OidsBySize();
    std::size_t values = 0;
    bool alike = left.size() == right.size();
    for (std::size_t i = 0; alike && i < left.size(); ++i) {
        const std::vector<CQelProperty> record = database.Values(left[i]);
        alike = record == store.Values(right[i]);
        values += record.size();
    }
    if (alike)
        std::cout << "Both answer alike: " << left.size() << " records in one order, " << values
                  << " equal values\n";
    else
        std::cout << "The two differ\n";
    return alike;
}

void ShowLargest(CSqlCatalogue& catalogue, std::size_t rows)
{
    const CStopwatch watch;
    std::vector<unsigned long> oids = catalogue.OidsBySize();
    std::cout << "Sorted " << oids.size() << " packages by size and name: " << watch.Text() << "\n";
    if (rows == 0)
        return;
    std::cout << "\n";
    oids.resize(std::min(rows, oids.size()));
    catalogue.Print(oids, std::cout);
}

int Run(const SOptions& options)
{
    const std::vector<SPackage> packages = ReadPackageList(options.status);
    const std::filesystem::path databasePath = options.folder / "catalogue.db";
    const std::filesystem::path storePath = options.folder / "catalogue.store";
    if (!std::filesystem::exists(databasePath))
        FillDatabase(databasePath, packages);
    if (!std::filesystem::exists(storePath))
        FillStore(storePath, packages);

    CQelSQLite connection;
    RequireOpen(connection, databasePath);
    CQelPropDB db(&connection);
    Require(db.Attach(false, nullptr), "reading the database");
    CSqlCatalogue database(db);
    database.Find();

    CQelPropDB3X legacy;
    Require(legacy.Open(storePath.wstring(), true), "opening " + storePath.string());
    CLegacyCatalogue store(legacy);
    store.Find();

    bool same = Verify(database, packages, "catalogue.db");
    same = Verify(store, packages, "catalogue.store") && same;
    same = AnswerAlike(database, store) && same;
    ShowLargest(database, options.rows);
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
