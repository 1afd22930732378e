#ifndef ZEPHYR_CONSOLE_COMMANDS_SORTEDWORDS_H
#define ZEPHYR_CONSOLE_COMMANDS_SORTEDWORDS_H

#include "Form.h"
#include "Words.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace zephyr::console::commands::detail {

/// How `word` reads as a switch of `form` where a word that is none would be for the parameter with the index `next`, if
/// there is one. Nothing for a word that is an argument: one without a slash in front, any in a form without switches, and
/// one that names no switch where a file is expected, since a file's name may begin with a slash.
std::optional<SwitchWord> readSwitch(const Form& form, const std::u32string& word,
                                     std::optional<std::size_t> next);

/// The words of a line, each with the parameter that it is for: a switch for the one that it names, and any other word for
/// the first argument that no word before it gave, be it by its place or by its name.
struct SortedWords
{
    /// \param form the parameters.
    /// \param words the line, without the command.
    /// \param first the first of them that is no name of a sub-command.
    /// \param usageName what errors call the form.
    /// Throws ArgumentError for a word that is for none.
    SortedWords(const Form& form, const std::vector<std::u32string>& words, std::size_t first,
                const std::u32string& usageName);

    std::vector<std::optional<std::u32string>> given; ///< For each parameter, without quotes.
    std::vector<std::u32string> rest;                 ///< For the one that takes the words that are left.
    std::size_t readFromRest = 0;
};

} // namespace zephyr::console::commands::detail

#endif
