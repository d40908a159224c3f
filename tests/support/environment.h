// environment.h: environment variables set for a while.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

namespace qeltest {

/// Takes the variables that name a locale out of the environment and puts them back at its end.
class CLocaleEnvironment
{
public:
    /// @param all  becomes LC_ALL, if it is not empty
    explicit CLocaleEnvironment(const std::string& all = {});
    ~CLocaleEnvironment();
    CLocaleEnvironment(const CLocaleEnvironment&) = delete;
    CLocaleEnvironment& operator=(const CLocaleEnvironment&) = delete;

    /// Whether the user has this locale now. Where the system itself keeps a user's locale, and not the
    /// environment, it is the one that the program was started with.
    bool IsInForce() const;
    /// The same to the letter: then no user of such a system has the neutral locale, for which one with a
    /// full stop stands otherwise.
    bool IsExactlyInForce() const;
    /// Whether a change of the environment changes the user's locale.
    static bool CanSwitch();

    /// Sets one variable, or takes it away when the value is empty; put back at the end as the others are.
    void Set(const std::string& variable, const std::string& value);

private:
    std::string m_all;
    std::map<std::string, std::optional<std::string>> m_before;
};

} // namespace qeltest

/// Leaves a test that a locale cannot be given to. Where each user has one locale, the whole program is run
/// once for each.
#define SKIP_UNLESS_IN_FORCE(environment)                                                                    \
    if (!(environment).IsInForce())                                                                          \
    GTEST_SKIP() << "the system's user has another locale, which no process changes for itself"

/// The same for a test of what the neutral locale writes.
#define SKIP_UNLESS_EXACTLY_IN_FORCE(environment)                                                            \
    if (!(environment).IsExactlyInForce())                                                                   \
    GTEST_SKIP() << "the system's user has another locale, which no process changes for itself"

/// Leaves a test that goes from one locale to another, or mixes several.
#define SKIP_UNLESS_LOCALES_SWITCH()                                                                         \
    if (!qeltest::CLocaleEnvironment::CanSwitch())                                                           \
    GTEST_SKIP() << "the system's user has one locale, which no process changes for itself"
