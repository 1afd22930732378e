#ifndef ZEPHYR_CONSOLE_REMOTE_TERMINAL_KEYREADER_H
#define ZEPHYR_CONSOLE_REMOTE_TERMINAL_KEYREADER_H

#include <QStringDecoder>

#include <chrono>
#include <deque>
#include <optional>

namespace zephyr::console::remote {

/// The keys that come from a terminal, as characters, and a bell that wakes who waits for one. All functions but
/// ring() belong to one thread.
class KeyReader
{
public:
    /// Reads from `in`, which must stay open. Throws `std::system_error` if there can be no pipe.
    explicit KeyReader(int in);
    ~KeyReader();

    KeyReader(const KeyReader&) = delete;
    KeyReader& operator=(const KeyReader&) = delete;

    /// Takes the next key if one has been read.
    std::optional<wchar_t> take();

    /// Forgets the keys that have been read.
    void clear() { mKeys.clear(); }

    /// Waits until the bell rings or, if `reads`, there is a key to read, but for `atMost` at the longest unless that is
    /// negative.
    /// \return whether there is a key to read, or the input has ended.
    bool wait(bool reads, std::chrono::milliseconds atMost);

    /// Reads what there is. \return false if the input has ended.
    bool read();

    /// Ends wait(). From any thread.
    void ring() const;

    /// What to write a byte to, for a signal handler that rings.
    int bell() const { return mBellIn; }

private:
    int mInput;
    int mBellIn = -1;
    int mBellOut = -1;
    QStringDecoder mDecoder{QStringDecoder::Utf8};
    std::deque<wchar_t> mKeys;
};

} // namespace zephyr::console::remote

#endif
