#include "zephyr/common/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <gtest/gtest.h>

namespace {

using zephyr::Clipboard;

TEST(Clipboard, IsEmptyWhenNothingWasCopied)
{
    QGuiApplication::clipboard()->clear();
    EXPECT_EQ(Clipboard::text(), U"");
}

TEST(Clipboard, ReturnsWhatWasCopiedAsCodePoints)
{
    QGuiApplication::clipboard()->setText(QString::fromUtf8("a\tb\n\u00E9\u20AC\U0001F680\U0010FFFF"));
    EXPECT_EQ(Clipboard::text(), U"a\tb\n\u00E9\u20AC\U0001F680\U0010FFFF");
}

TEST(Clipboard, KeepsByteOrderMarksNullsAndNoncharacters)
{
    const char16_t copied[] = {0xFEFF, u'a', 0, 0xFEFF, 0xFFFF};
    QGuiApplication::clipboard()->setText(
        QString::fromUtf16(copied, std::size(copied)).prepend(QChar(0xFEFF)));
    const std::u32string text = Clipboard::text();
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(text.front(), U'\uFEFF');
    EXPECT_TRUE(text.ends_with(std::u32string_view(U"a\0\uFEFF\uFFFF", 4)));
}

TEST(Clipboard, ReplacesLoneSurrogates)
{
    QString copied = "x";
    copied += QChar(0xD800);
    copied += 'y';
    copied += QChar(0xDC00);
    copied += QChar(0xDBFF);
    QGuiApplication::clipboard()->setText(copied);
    EXPECT_EQ(Clipboard::text(), U"x\uFFFDy\uFFFD\uFFFD");
}

TEST(Clipboard, IsEmptyWhenTheCopyIsNoText)
{
    auto* copied = new QMimeData; // The clipboard takes it.
    copied->setData("application/octet-stream", "abc");
    QGuiApplication::clipboard()->setMimeData(copied);
    EXPECT_EQ(Clipboard::text(), U"");
}

} // namespace
