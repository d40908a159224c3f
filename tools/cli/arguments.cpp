// arguments.cpp: values of the command line as texts and numbers.
#include "arguments.h"

#include "adaptor/text.h"

#include <qelplat4/native_path.h>

#include <charconv>
#include <filesystem>

namespace tool {

std::string CArguments::Text(const std::string& key, const std::string& absent) const
{
    const std::vector<std::string>& values = All(key);
    return values.empty() ? absent : values.back();
}

const std::vector<std::string>& CArguments::All(const std::string& key) const
{
    static const std::vector<std::string> kNone;
    const auto found = m_values.find(key);
    return found == m_values.end() ? kNone : found->second;
}

unsigned long CArguments::Number(const std::string& key, unsigned long absent, unsigned long least,
                                 unsigned long most) const
{
    if (!Has(key))
        return absent;
    const std::string text = Text(key);
    unsigned long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < least || number > most)
        throw UsageFailure(key + ": '" + text + "' is no number from " + std::to_string(least) + " to " +
                           std::to_string(most));
    return number;
}

void RequireOtherThanArguments(const CArguments& arguments, const std::string& option)
{
    const auto path = [&](const std::string& key) { return qel::NativePath(Wide(arguments.Text(key))); };
    for (const char* const argument : {"FILE", "OTHER", "INPUT", "TARGET"}) {
        std::error_code error;
        if (std::filesystem::equivalent(path(argument), path(option), error))
            throw UsageFailure(option + (argument == std::string("FILE") ? ": this is the database itself"
                                                                         : ": the command reads this file"));
    }
}

SFailure UsageFailure(const std::string& message, const std::string& hint)
{
    return MakeFailure(EExit::eUsage, message, hint);
}

} // namespace tool
