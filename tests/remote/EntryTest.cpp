#include "protocol/Entry.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace zephyr::console::remote {
namespace {

TEST(Entry, IsAnObjectOfIndexTypeAndText)
{
    EXPECT_EQ(R"({"index":12,"text":"Wind: 4 m/s","type":"output"})",
              QJsonDocument(toJson({12, Entry::Type::Output, "Wind: 4 m/s"})).toJson(QJsonDocument::Compact));
}

TEST(Entry, ComesBackFromItsObject)
{
    for (const Entry::Type type : {Entry::Type::Input, Entry::Type::Output, Entry::Type::Prompt}) {
        const Entry entry{3, type,
                          QString("  a\n") + QChar(0) + "\x1b[31m" + QString::fromUtf8("\u00e9\U0001F32C")};
        const QByteArray line = QJsonDocument(toJson(entry)).toJson(QJsonDocument::Compact);
        EXPECT_EQ(entry, entryFrom(QJsonDocument::fromJson(line).object()));
    }
}

TEST(Entry, HasThePromptInFrontIfItIsInput)
{
    EXPECT_EQ(">> help", shownText({0, Entry::Type::Input, "help"}));
    EXPECT_EQ("help", shownText({0, Entry::Type::Output, "help"}));
}

TEST(Entry, IsOfNoOtherObject)
{
    for (const QJsonObject& object :
         {QJsonObject{}, QJsonObject{{"index", 1}, {"text", "a"}},
          QJsonObject{{"index", 1}, {"type", "output"}}, QJsonObject{{"type", "output"}, {"text", "a"}},
          QJsonObject{{"index", -1}, {"type", "output"}, {"text", "a"}},
          QJsonObject{{"index", "1"}, {"type", "output"}, {"text", "a"}},
          QJsonObject{{"index", 1}, {"type", "warning"}, {"text", "a"}},
          QJsonObject{{"index", 1}, {"type", "output"}, {"text", 7}}}) {
        EXPECT_EQ(std::nullopt, entryFrom(object));
    }
}

} // namespace
} // namespace zephyr::console::remote
