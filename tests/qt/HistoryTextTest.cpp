#include "HistoryText.h"

#include <gtest/gtest.h>

#include <string>

namespace zephyr::console::qt {
namespace {

TEST(HistoryText, WritesTextAsItIs)
{
    EXPECT_EQ("set x \"a b\" \xe6\xbc\xa2 \xf0\x9f\x98\x80 \xef\xbf\xbf",
              escapedLine(U"set x \"a b\" \u6f22 \U0001f600 \uffff"));
    EXPECT_EQ("", escapedLine(U""));
}

TEST(HistoryText, EscapesWhatBreaksALineOrIsNoText)
{
    EXPECT_EQ(R"(a\\b\nc\u{d}\u{9}\u{0}\u{1b}\u{7f}\u{85})",
              escapedLine(std::u32string(U"a\\b\nc\r\t\0\x1b\x7f\x85", 11)));
    EXPECT_EQ(R"(\u{d800}\u{110000}\u{ffffffff})",
              escapedLine(std::u32string{char32_t{0xd800}, char32_t{0x110000}, char32_t{0xffffffff}}));
}

TEST(HistoryText, ReadsWhatItWrote)
{
    std::u32string line = U"\\n \\u{41} \\";
    for (char32_t c = 0; c < 0x300; ++c) {
        line += c;
    }
    line += {char32_t{0xd83d}, char32_t{0xde00}, char32_t{0xfeff}, char32_t{0x10ffff}, char32_t{0xffffffff}};
    EXPECT_EQ(line, unescapedLine(escapedLine(line)));
}

TEST(HistoryText, ReadsABackslashBeforeAnythingElseAsItself)
{
    EXPECT_EQ(U"C:\\temp\\", unescapedLine(R"(C:\temp\)"));
    EXPECT_EQ(U"\\u{} \\u{g} \\u{1 \\u{123456789} \\u{-1} \\u\\",
              unescapedLine(R"(\u{} \u{g} \u{1 \u{123456789} \u{-1} \u\\)"));
    EXPECT_EQ(U"A", unescapedLine(R"(\u{41})"));
}

TEST(HistoryText, ReadsWhatIsNotUtf8AsReplacementCharacters)
{
    EXPECT_EQ(U"a\ufffdb\ufffd", unescapedLine("a\xff"
                                               "b\xc3"));
}

} // namespace
} // namespace zephyr::console::qt
