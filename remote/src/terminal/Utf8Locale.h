#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_UTF8LOCALE_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_UTF8LOCALE_H

#include <clocale>
#include <locale.h> // NOLINT(modernize-deprecated-headers): uselocale() is POSIX's

namespace zephyr::console::remote {

/// Makes characters UTF-8 for the C library on this thread, for as long as it lives, and leaves the program's locale
/// alone. Where the system has no such locale, the program's holds.
class Utf8Locale
{
public:
    Utf8Locale() : mLocale(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
    {
        if (mLocale != nullptr) {
            mBefore = ::uselocale(mLocale);
        }
    }

    ~Utf8Locale()
    {
        if (mLocale != nullptr) {
            ::uselocale(mBefore);
            ::freelocale(mLocale);
        }
    }

    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    locale_t mLocale;
    locale_t mBefore = nullptr;
};

} // namespace zephyr::console::remote

#endif
