#ifndef ZEPHYR_TESTS_PROPERTIES_GENERATORS_H
#define ZEPHYR_TESTS_PROPERTIES_GENERATORS_H

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h> // needs the header above

#include <cstddef>
#include <numeric>
#include <string>
#include <vector>

namespace zephyr::test {

/// A text of at most `longest` of the given `characters`, in UTF-8. With the default, what a test types stays
/// far below the limit of the input line.
inline rc::Gen<std::string> textOf(const std::vector<std::string>& characters, int longest = 10)
{
    const auto picks = rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(characters));
    return rc::gen::map(rc::gen::resize(longest, picks), [](const std::vector<std::string>& picked) {
        return std::accumulate(picked.begin(), picked.end(), std::string());
    });
}

/// Like textOf(), but with at least one character.
inline rc::Gen<std::string> someTextOf(const std::vector<std::string>& characters)
{
    return rc::gen::suchThat(textOf(characters), [](const std::string& text) { return !text.empty(); });
}

/// Letters and other characters without a meaning to the console.
inline const std::vector<std::string> kPlainCharacters = {"a", "b",      "Z",      "7",         "_",
                                                          "-", "\u00E9", "\u4E2D", "\U0001F600"};

/// `characters` followed by `more`.
inline std::vector<std::string> with(std::vector<std::string> characters,
                                     const std::vector<std::string>& more)
{
    characters.insert(characters.end(), more.begin(), more.end());
    return characters;
}

/// `texts` joined by `separator`.
inline std::string joined(const std::vector<std::string>& texts, const std::string& separator)
{
    std::string whole;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        whole += (i == 0 ? std::string() : separator) + texts[i];
    }
    return whole;
}

} // namespace zephyr::test

#endif
