// package_list.cpp: reads the paragraphs of a package database.
#include "package_list.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

namespace {

using TFields = std::map<std::string, std::string>;

// Reads up to the next empty line; of a field of several lines only the first is kept.
TFields ReadParagraph(std::istream& in)
{
    TFields fields;
    std::string line;
    while (std::getline(in, line) && !line.empty()) {
        const std::size_t colon = line.find(": ");
        if (line[0] != ' ' && colon != std::string::npos)
            fields[line.substr(0, colon)] = line.substr(colon + 2);
    }
    return fields;
}

std::string Take(TFields& fields, const char* name)
{
    return std::move(fields[name]);
}

// Number at the start of the text; 0 without one.
unsigned long long NumberOf(const std::string& text)
{
    unsigned long long number = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9')
            break;
        number = number * 10 + static_cast<unsigned>(digit - '0');
    }
    return number;
}

int CountDependencies(const std::string& list)
{
    return list.empty() ? 0 : 1 + static_cast<int>(std::count(list.begin(), list.end(), ','));
}

long long UnpackedAt(const std::filesystem::path& info, const std::string& name, const std::string& machine)
{
    const std::string qualified = name + ":" + machine; // of packages that can be there for several machines
    for (const std::string& file : {name, qualified}) {
        std::error_code failure;
        const auto time = std::filesystem::last_write_time(info / (file + ".list"), failure);
        if (failure)
            continue;
        // C++17 has no conversion between the two clocks: measure both now.
        const auto age = std::filesystem::file_time_type::clock::now() - time;
        const auto moment = std::chrono::system_clock::now() -
                            std::chrono::duration_cast<std::chrono::system_clock::duration>(age);
        return std::chrono::duration_cast<std::chrono::seconds>(moment.time_since_epoch()).count();
    }
    return 0;
}

SPackage PackageOf(TFields& fields, const std::filesystem::path& info)
{
    SPackage package;
    package.name = Take(fields, "Package");
    package.version = Take(fields, "Version");
    package.section = Take(fields, "Section");
    package.summary = Take(fields, "Description");
    package.homepage = Take(fields, "Homepage");
    package.bytes = NumberOf(fields["Installed-Size"]) * 1024; // listed in KiB
    package.dependencies = CountDependencies(fields["Depends"]) + CountDependencies(fields["Pre-Depends"]);
    package.essential = fields["Essential"] == "yes";
    package.unpacked = UnpackedAt(info, package.name, fields["Architecture"]);
    return package;
}

} // namespace

std::vector<SPackage> ReadPackageList(const std::string& path)
{
    std::ifstream in(path);
    if (!in)
        throw std::runtime_error("cannot read the package list " + path);
    const std::filesystem::path info = std::filesystem::path(path).parent_path() / "info";
    std::vector<SPackage> packages;
    while (in) {
        TFields fields = ReadParagraph(in);
        if (fields["Status"] == "install ok installed")
            packages.push_back(PackageOf(fields, info));
    }
    if (packages.empty())
        throw std::runtime_error("no installed package in " + path);
    return packages;
}
