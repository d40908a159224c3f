// type_name.cpp: one word for each type, and the other words under which people know them.
#include "type_name.h"

#include <algorithm>
#include <array>

namespace tool {
namespace {

struct SWord
{
    const char* word;
    CQelProperty::EType type;
};

constexpr std::array<SWord, 14> kWords = {{{"string", CQelProperty::eString},
                                           {"integer", CQelProperty::eInt},
                                           {"unsigned", CQelProperty::eUInt},
                                           {"integer64", CQelProperty::eInt64},
                                           {"unsigned64", CQelProperty::eUInt64},
                                           {"double", CQelProperty::eDouble},
                                           {"date", CQelProperty::eDate},
                                           {"time", CQelProperty::eTime},
                                           {"boolean", CQelProperty::eBool},
                                           {"currency", CQelProperty::eCurrency},
                                           {"hyperlink", CQelProperty::eURL},
                                           {"reference", CQelProperty::eReference},
                                           {"binary", CQelProperty::eBlob},
                                           {"datetime", CQelProperty::eDateTime}}};

constexpr std::array<SWord, 7> kOtherWords = {{{"text", CQelProperty::eString},
                                               {"int", CQelProperty::eInt},
                                               {"int64", CQelProperty::eInt64},
                                               {"uint64", CQelProperty::eUInt64},
                                               {"bool", CQelProperty::eBool},
                                               {"url", CQelProperty::eURL},
                                               {"blob", CQelProperty::eBlob}}};

template <class Words>
bool Find(const Words& words, const std::string& name, CQelProperty::EType& type)
{
    const auto found =
        std::find_if(words.begin(), words.end(), [&](const SWord& word) { return name == word.word; });
    if (found == words.end())
        return false;
    type = found->type;
    return true;
}

} // namespace

std::string TypeName(CQelProperty::EType type)
{
    if (type == CQelProperty::eNull)
        return "null";
    for (const SWord& word : kWords) {
        if (word.type == type)
            return word.word;
    }
    return "type " + std::to_string(static_cast<int>(type));
}

bool TypeOfName(const std::string& name, CQelProperty::EType& type)
{
    return Find(kWords, name, type) || Find(kOtherWords, name, type);
}

std::vector<std::string> TypeNames()
{
    std::vector<std::string> names;
    names.reserve(kWords.size());
    for (const SWord& word : kWords)
        names.emplace_back(word.word);
    return names;
}

} // namespace tool
