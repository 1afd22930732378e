#include "DeadKeys.h"

#include <Qt>

#include <gtest/gtest.h>

#include <string>

namespace zephyr::console::qt {
namespace {

std::u32string composed(int key, const std::u32string& text)
{
    DeadKeys keys;
    keys.press(key);
    return keys.compose(text);
}

TEST(DeadKeys, ComposeTheNextLetter)
{
    EXPECT_EQ(U"\u00e9", composed(Qt::Key_Dead_Acute, U"e"));
    EXPECT_EQ(U"\u00ca", composed(Qt::Key_Dead_Circumflex, U"E"));
    EXPECT_EQ(U"\u00f1", composed(Qt::Key_Dead_Tilde, U"n"));
    EXPECT_EQ(U"\u0161", composed(Qt::Key_Dead_Caron, U"s"));
    EXPECT_EQ(U"\u0151", composed(Qt::Key_Dead_Doubleacute, U"o"));
    EXPECT_EQ(U"\u03ac", composed(Qt::Key_Dead_Acute, U"\u03b1"));
    EXPECT_EQ(U"\u00e7", composed(Qt::Key_Dead_Cedilla, U"c"));
}

TEST(DeadKeys, StandAloneBeforeASpace)
{
    EXPECT_EQ(U"^", composed(Qt::Key_Dead_Circumflex, U" "));
    EXPECT_EQ(U"`", composed(Qt::Key_Dead_Grave, U" "));
}

TEST(DeadKeys, StandBeforeALetterThatTakesNoSuchAccent)
{
    EXPECT_EQ(U"~b", composed(Qt::Key_Dead_Tilde, U"b"));
    EXPECT_EQ(U"\u00e9bc", composed(Qt::Key_Dead_Acute, U"ebc"));
}

TEST(DeadKeys, ActOnce)
{
    DeadKeys keys;
    EXPECT_EQ(U"e", keys.compose(U"e"));
    keys.press(Qt::Key_Dead_Acute);
    EXPECT_EQ(U"", keys.compose(U"")) << "a key that types nothing, such as Shift";
    EXPECT_EQ(U"\u00e9", keys.compose(U"e"));
    EXPECT_EQ(U"e", keys.compose(U"e"));
    keys.press(Qt::Key_Dead_Acute);
    keys.clear();
    EXPECT_EQ(U"e", keys.compose(U"e"));
    EXPECT_EQ(U"e", composed(Qt::Key_Dead_Greek, U"e")) << "one that isn't known";
}

} // namespace
} // namespace zephyr::console::qt
