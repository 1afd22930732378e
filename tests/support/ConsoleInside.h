#ifndef ZEPHYR_TESTS_SUPPORT_CONSOLEINSIDE_H
#define ZEPHYR_TESTS_SUPPORT_CONSOLEINSIDE_H

#include "ConsolePrivate.h"
#include "support/PrivateMember.h"
#include "zephyr/console/Console.h"

#include <QFont>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zephyr::test {

// Opens members whose types are private themselves.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-template-friend" // which is what is meant
#endif
struct PartsOf
{
    friend auto memberPointer(PartsOf);
};
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
template <auto Member>
struct OpenParts
{
    friend auto memberPointer(PartsOf) { return Member; }
};
template struct OpenParts<&console::Console::mPrivate>;

struct InputBufferOf : PrivateMember<InputBufferOf, std::u32string console::InputLine::*>
{};
template struct Open<InputBufferOf, &console::InputLine::mInput>;

struct InputLengthOf : PrivateMember<InputLengthOf, std::uint32_t console::InputLine::*>
{};
template struct Open<InputLengthOf, &console::InputLine::mInputLength>;

struct HistoryIndexOf : PrivateMember<HistoryIndexOf, std::int32_t console::History::*>
{};
template struct Open<HistoryIndexOf, &console::History::mHistoryIndex>;

struct RecordsOf : PrivateMember<RecordsOf, std::vector<console::CommandRecord> console::History::*>
{};
template struct Open<RecordsOf, &console::History::mCmdBuffer>;

/// The parts of a console behind its interface.
inline auto& partsOf(const console::Console& console) { return *(console.*memberPointer(PartsOf())); }

/// The buffer that the input line is edited in; its size is what typing at the end is limited by.
inline const std::u32string& inputBuffer(const console::Console& console)
{
    return partsOf(console).lock()->line.*memberPointer(InputBufferOf());
}

/// The code points of the line, which may be more than the buffer holds.
inline std::uint32_t inputLength(const console::Console& console)
{
    return partsOf(console).lock()->line.*memberPointer(InputLengthOf());
}

inline std::int32_t& historyIndex(console::Console& console)
{
    return partsOf(console).mHistory.*memberPointer(HistoryIndexOf());
}

inline const std::vector<console::CommandRecord>& records(const console::Console& console)
{
    return partsOf(console).mHistory.*memberPointer(RecordsOf());
}

inline std::shared_ptr<QFont>& sharedFont(console::Console& console) { return partsOf(console).mFont; }

/// Has the console draw and measure with `font`.
inline void setFont(console::Console& console, const QFont& font)
{
    partsOf(console).mFont = std::make_shared<QFont>(font);
    partsOf(console).mMeasuringFont = font;
}

} // namespace zephyr::test

#endif
