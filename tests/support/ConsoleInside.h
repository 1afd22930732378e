#ifndef ZEPHYR_TESTS_SUPPORT_CONSOLEINSIDE_H
#define ZEPHYR_TESTS_SUPPORT_CONSOLEINSIDE_H

#include "support/PrivateMember.h"
#include "zephyr/console/Console.h"

#include <QFont>

#include <cstdint>
#include <memory>
#include <string>

namespace zephyr::test {

struct InputBufferOf : PrivateMember<InputBufferOf, std::u32string console::Console::*>
{};
template struct Open<InputBufferOf, &console::Console::mInput>;

struct HistoryIndexOf : PrivateMember<HistoryIndexOf, std::int32_t console::Console::*>
{};
template struct Open<HistoryIndexOf, &console::Console::mHistoryIndex>;

struct FontOf : PrivateMember<FontOf, std::shared_ptr<QFont> console::Console::*>
{};
template struct Open<FontOf, &console::Console::mFont>;

/// The buffer that the input line is edited in; its size is what typing at the end is limited by.
inline const std::u32string& inputBuffer(const console::Console& console)
{
    return console.*memberPointer(InputBufferOf());
}

inline std::int32_t& historyIndex(console::Console& console)
{
    return console.*memberPointer(HistoryIndexOf());
}

inline std::shared_ptr<QFont>& sharedFont(console::Console& console)
{
    return console.*memberPointer(FontOf());
}

} // namespace zephyr::test

#endif
