#ifndef ZEPHYR_TESTS_SUPPORT_KEYTABLE_H
#define ZEPHYR_TESTS_SUPPORT_KEYTABLE_H

#include <array>

namespace zephyr::test {

/// The codes of the keys that the console knows, as the numbers that a host without Qt's headers passes.
enum KeyCode : int
{
    KeyBackspace = 0x01000003,
    KeyDelete = 0x01000007,
    KeyLeft = 0x01000012,
    KeyRight = 0x01000014,
    KeyHome = 0x01000010,
    KeyEnd = 0x01000011,
    KeyReturn = 0x01000004,
    KeyEnter = 0x01000005,
    KeyUp = 0x01000013,
    KeyDown = 0x01000015,
    KeyV = 0x56,
    KeyTab = 0x01000001,
    KeyBacktab = 0x01000002,
    KeyPageUp = 0x01000016,
    KeyPageDown = 0x01000017,
    KeyBackQuote = 0x60,
    KeyA = 0x41,
    KeyEscape = 0x01000000,
};

inline constexpr int kControl = 0x04000000;
inline constexpr int kShift = 0x02000000;
inline constexpr int kEveryModifierButControl =
    0x02000000 | 0x08000000 | 0x10000000 | 0x20000000 | 0x40000000;

/// Every key that the console handles, except the back-quote, and two that it does not.
inline constexpr std::array kKeys = {KeyBackspace, KeyDelete, KeyLeft, KeyRight,  KeyHome,    KeyEnd,
                                     KeyReturn,    KeyEnter,  KeyUp,   KeyDown,   KeyV,       KeyTab,
                                     KeyBacktab,   KeyPageUp, KeyA,    KeyEscape, KeyPageDown};

} // namespace zephyr::test

#endif
