// suggestion.cpp: finds the known word that takes the fewest keystrokes to correct.
#include "suggestion.h"

#include <algorithm>
#include <numeric>

namespace tool {
namespace {

std::string Lower(std::string text)
{
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

/// Letters to insert, remove or replace, and neighbours to swap, to make one text of the other.
std::size_t Distance(const std::string& from, const std::string& to)
{
    std::vector<std::size_t> before(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> now(to.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        now[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            now[j] = std::min({replaced, last[j] + 1, now[j - 1] + 1});
            const bool swapped = i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
            if (swapped)
                now[j] = std::min(now[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(now);
    }
    return last[to.size()];
}

} // namespace

std::string Suggestion(const std::string& given, const std::vector<std::string>& known)
{
    constexpr std::size_t kLongest = 200; // the work grows with the square
    if (given.size() > kLongest)
        return {};
    // A third of the letters may be wrong; more would suggest any short word.
    std::size_t nearest = std::max<std::size_t>(1, given.size() / 3) + 1;
    const std::string* best = nullptr;
    for (const std::string& word : known) {
        if (word.size() > kLongest)
            continue;
        const std::size_t distance = Distance(Lower(given), Lower(word));
        if (distance < nearest && distance < std::max(given.size(), word.size())) {
            nearest = distance;
            best = &word;
        }
    }
    return best == nullptr ? std::string() : "did you mean '" + *best + "'?";
}

} // namespace tool
