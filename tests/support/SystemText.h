#ifndef ZEPHYR_TESTS_SUPPORT_SYSTEMTEXT_H
#define ZEPHYR_TESTS_SUPPORT_SYSTEMTEXT_H

#include <QString>

#include <string>
#include <system_error>

namespace zephyr::test {

/// The system's text for an error, in the language of the locale, as UTF-8. Ill-formed bytes become U+FFFD, as in a console.
inline std::string systemText(std::errc error)
{
    return QString::fromStdString(std::make_error_code(error).message()).toStdString();
}

} // namespace zephyr::test

#endif
