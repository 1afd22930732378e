#include "Generators.h"
#include "SplitString.h"
#include "support/ScriptedCommand.h"
#include "zephyr/common/StringUtil.h"
#include "zephyr/console/Console.h"

namespace zephyr::console {
namespace {

using test::kPlainCharacters;
using test::textOf;
using test::with;

constexpr int kLongLine = 100; // code points

std::u32string joinedWords(const std::vector<std::u32string>& pieces)
{
    std::u32string text;
    for (const std::u32string& piece : pieces) {
        text += piece + U' ';
    }
    return text;
}

std::u32string anyLine()
{
    return StringUtil::toU32String(*textOf(with(kPlainCharacters, {" ", " ", "\"", "\"", "="}), kLongLine));
}

RC_GTEST_PROP(WordsProperties, PiecesThatAreEachEndedByADelimiterComeBack, ())
{
    const auto texts =
        *rc::gen::container<std::vector<std::string>>(textOf(with(kPlainCharacters, {"\"", "="})));
    std::vector<std::u32string> pieces;
    for (const std::string& text : texts) {
        pieces.push_back(StringUtil::toU32String(text));
    }
    RC_ASSERT(splitString(joinedWords(pieces), U' ') == pieces);
}

RC_GTEST_PROP(WordsProperties, JoiningThePiecesGivesTheTextAgain, ())
{
    const std::u32string text = anyLine();
    const bool endsOpen = !text.empty() && text.back() != U' ';
    std::u32string expected = text;
    expected += endsOpen ? U" " : U"";
    RC_ASSERT(joinedWords(splitString(text, U' ')) == expected);
}

RC_GTEST_PROP(WordsProperties, UnmaskingUndoesMasking, ())
{
    const std::u32string text = anyLine();
    std::u32string masked = text;
    maskQuoted(masked, U' ');
    std::u32string inside = masked;
    unmaskQuoted(inside, U' ');
    RC_ASSERT(inside == text);
    unmask(masked, U' ');
    RC_ASSERT(masked == text);
}

RC_GTEST_PROP(WordsProperties, MaskingTwiceIsMaskingOnce, ())
{
    std::u32string once = anyLine();
    maskQuoted(once, U' ');
    std::u32string twice = once;
    maskQuoted(twice, U' ');
    RC_ASSERT(twice == once);
}

RC_GTEST_PROP(WordsProperties, ACommandSeesEachQuotedPhraseAsOneWord, ())
{
    const auto phrases =
        *rc::gen::container<std::vector<std::string>>(textOf(with(kPlainCharacters, {" ", "=", ">"})));
    Console console;
    std::vector<std::u32string> seen;
    test::addCommand(console, U"cmd").onExecute = [&seen](const ConsoleArgs& args, Console&) {
        seen = test::wordsOf(args);
    };
    std::u32string line = U"cmd";
    std::vector<std::u32string> expected{U"cmd"};
    for (const std::string& phrase : phrases) {
        expected.push_back(U'"' + StringUtil::toU32String(phrase) + U'"');
        line += U' ' + expected.back();
    }
    console.execute(line);
    RC_ASSERT(seen == expected);
}

} // namespace
} // namespace zephyr::console
