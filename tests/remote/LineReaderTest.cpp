#include "protocol/LineReader.h"

#include <gtest/gtest.h>

namespace zephyr::console::remote {
namespace {

TEST(LineReader, HasNoLineBeforeALineFeed)
{
    LineReader reader(10);
    EXPECT_EQ(std::nullopt, reader.next());
    reader.add("ab");
    EXPECT_EQ(std::nullopt, reader.next());
    EXPECT_TRUE(reader.hasRest());
    reader.add("c\n");
    EXPECT_EQ("abc", reader.next());
    EXPECT_FALSE(reader.hasRest());
}

TEST(LineReader, TakesLinesOneByOneEmptyOnesToo)
{
    LineReader reader(10);
    reader.add("a\n\nb\nc");
    EXPECT_EQ("a", reader.next());
    EXPECT_EQ("", reader.next());
    EXPECT_EQ("b", reader.next());
    EXPECT_EQ(std::nullopt, reader.next());
    EXPECT_TRUE(reader.hasRest());
}

TEST(LineReader, IsOverItsLimitByOneByte)
{
    LineReader reader(3);
    reader.add("abc");
    EXPECT_FALSE(reader.isOverLimit());
    reader.add("d");
    EXPECT_TRUE(reader.isOverLimit());
    reader.add("\n");
    EXPECT_TRUE(reader.isOverLimit());
    EXPECT_EQ(std::nullopt, reader.next());
}

TEST(LineReader, ReturnsALineOfItsLimitAndTheLinesBeforeALongerOne)
{
    LineReader reader(3);
    reader.add("abc\nabcd\n");
    EXPECT_FALSE(reader.isOverLimit());
    EXPECT_EQ("abc", reader.next());
    EXPECT_TRUE(reader.isOverLimit());
}

TEST(LineReader, PassesEveryByteOfALongStreamOn)
{
    LineReader reader(20);
    QByteArray sent;
    QByteArray read;
    for (int i = 0; i < 10000; ++i) {
        const QByteArray piece = QByteArray::number(i) + (i % 3 == 0 ? "\n" : "");
        sent += piece;
        reader.add(piece);
        while (const auto line = reader.next()) {
            read += *line + '\n';
        }
    }
    EXPECT_EQ(sent, read);
}

} // namespace
} // namespace zephyr::console::remote
