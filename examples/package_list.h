// package_list.h: the packages of a Debian machine, as its own package database lists them.
#pragma once

#include <string>
#include <vector>

/// One installed package. Texts are UTF-8; empty where the list says nothing.
struct SPackage
{
    std::string name;
    std::string version;
    std::string section;
    std::string summary;
    std::string homepage;
    unsigned long long bytes = 0;
    int dependencies = 0;
    bool essential = false;
    long long unpacked = 0; ///< seconds since 1970; 0 when not known
};

/// Reads every installed package from a file of the form of /var/lib/dpkg/status.
///
/// The time of unpacking is that of the package's file list in the folder `info` beside the file.
/// @throws std::runtime_error when the file cannot be read or lists no package
std::vector<SPackage> ReadPackageList(const std::string& path);
