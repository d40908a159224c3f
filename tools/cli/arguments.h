// arguments.h: what was given on the command line, by the keys of the command's description.
#pragma once

#include "adaptor/failure.h"

#include <map>
#include <string>
#include <vector>

namespace tool {

/// Values of positional arguments ("TABLE") and of options ("--sort"); a flag has an empty value.
class CArguments
{
public:
    bool Has(const std::string& key) const { return m_values.count(key) != 0; }
    /// The value given last; `absent` when there is none.
    std::string Text(const std::string& key, const std::string& absent = {}) const;
    /// Every value, in the order given.
    const std::vector<std::string>& All(const std::string& key) const;
    /// The value as a whole number.
    /// @throws SFailure  a usage error for a value that is no number from `least` to `most`
    unsigned long Number(const std::string& key, unsigned long absent, unsigned long least = 0,
                         unsigned long most = 4294967295UL) const;

    void Set(const std::string& key, std::vector<std::string> values) { m_values[key] = std::move(values); }

private:
    std::map<std::string, std::vector<std::string>> m_values;
};

/// Refuses to write to a file that the command works on, by whatever path or link.
/// @param option  names the file that is to be written
/// @throws SFailure  2
void RequireOtherThanArguments(const CArguments& arguments, const std::string& option);

/// A failure of the command line itself: exit status 2.
SFailure UsageFailure(const std::string& message, const std::string& hint = {});

} // namespace tool
