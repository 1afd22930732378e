// The part of ZephyrCommon that ZephyrConsole uses, as a product might write it.
#pragma once

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QString>
#include <QUrl>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace zephyr {

class Color
{
public:
    constexpr Color(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha = 255)
        : mRed(red), mGreen(green), mBlue(blue), mAlpha(alpha)
    {}

    constexpr std::uint8_t red() const { return mRed; }
    constexpr std::uint8_t green() const { return mGreen; }
    constexpr std::uint8_t blue() const { return mBlue; }
    constexpr std::uint8_t alpha() const { return mAlpha; }

    friend constexpr bool operator==(const Color& left, const Color& right)
    {
        return left.mRed == right.mRed && left.mGreen == right.mGreen && left.mBlue == right.mBlue &&
               left.mAlpha == right.mAlpha;
    }

private:
    std::uint8_t mRed;
    std::uint8_t mGreen;
    std::uint8_t mBlue;
    std::uint8_t mAlpha;
};

template <typename Unit>
class Quantity
{
public:
    explicit constexpr Quantity(double value) : mValue(value) {}
    constexpr double value() const { return mValue; }

private:
    double mValue;
};

using Time = Quantity<struct Seconds>;
using Angle = Quantity<struct Degrees>;

class ElapsedSimTime
{
public:
    explicit constexpr ElapsedSimTime(Time deltaWallTime) : mDelta(deltaWallTime) {}
    constexpr Time deltaWallTime() const { return mDelta; }

private:
    Time mDelta;
};

struct Clipboard
{
    static std::u32string text() { return U"product"; }
};

struct StringUtil
{
    static std::string trim(std::string_view text)
    {
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).trimmed().toStdString();
    }

    static std::u32string trim(std::u32string_view text)
    {
        return QString::fromStdU32String(std::u32string(text)).trimmed().toStdU32String();
    }

    static std::string toString(std::u32string_view text)
    {
        return QString::fromStdU32String(std::u32string(text)).toStdString();
    }

    static std::u32string toU32String(std::string_view text)
    {
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toStdU32String();
    }
};

inline std::u32string executableDir() { return QCoreApplication::applicationDirPath().toStdU32String(); }

inline std::u32string currentDir() { return QDir::currentPath().toStdU32String(); }

struct ExternalProcess
{
    static bool openFileInDefaultApplication(const std::string& path)
    {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
    }
};

struct AssertFailure
{
    const char* source;
    int line;
    const char* expression;
    const char* message;
    bool canContinue;
};

struct Assert
{
    using Handler = std::function<bool(const AssertFailure&)>;

    static bool notifyAssert(const char* source, int line, const char* expression, const char* message,
                             bool canContinue)
    {
        return handler()({source, line, expression, message, canContinue});
    }

    static bool showQAVerify() { return true; }
    static void setShowQAVerify(bool) {}
    static Handler setHandler(Handler next) { return std::exchange(handler(), std::move(next)); }

private:
    static Handler& handler()
    {
        static Handler instance = [](const AssertFailure&) { return true; };
        return instance;
    }
};

} // namespace zephyr
