#ifndef ZEPHYR_CONSOLE_QT_LASTANSWER_H
#define ZEPHYR_CONSOLE_QT_LASTANSWER_H

#include <QString>

#include <cstddef>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::qt {

/// Where in the log the answer to the last line stands: the entries after the line's echo, without the empty entry that
/// ends them.
class LastAnswer
{
public:
    /// Finds the answer to a line that was run when the log had `sizeBefore` entries. If the line left no echo,
    /// the answer before it stays.
    void find(const Console& console, std::size_t sizeBefore);

    /// Whether there is no answer, or the last one has no entries.
    bool isEmpty() const { return mBegin >= mEnd; }

    /// The answer as text. Throws `std::bad_alloc`.
    QString text(const Console& console) const;

private:
    std::size_t mBegin = 0; // index of the first entry
    std::size_t mEnd = 0;   // index after the last one
};

} // namespace zephyr::console::qt

#endif
