#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>

#include <gtest/gtest.h>

namespace zephyr::test {
namespace {

TEST(TestFonts, AreTheOnesOfDejaVuWhateverIsInstalled)
{
    EXPECT_FALSE(QFontDatabase::families().isEmpty());
    for (const QString& family : QFontDatabase::families()) {
        const QString actual = QFontInfo(QFont(family)).family(); // "Monospace" and such are others' names
        EXPECT_TRUE(actual.startsWith("DejaVu")) << family.toStdString();
    }
}

} // namespace
} // namespace zephyr::test
