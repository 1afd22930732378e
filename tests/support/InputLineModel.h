#ifndef ZEPHYR_TESTS_SUPPORT_INPUTLINEMODEL_H
#define ZEPHYR_TESTS_SUPPORT_INPUTLINEMODEL_H

#include "support/KeyTable.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zephyr::test {

/// A plain model of how an open console handles keys: the visible text and three numbers. It knows one
/// command, `cmd`, which does nothing.
///
/// A recalled or completed line can be longer than the buffer. The text then holds the part of the line that is
/// in the buffer, and is shorter than the line's length.
class InputLineModel
{
public:
    InputLineModel(std::vector<std::u32string> candidates, std::u32string clipboard)
        : mCandidates(std::move(candidates)), mClipboard(std::move(clipboard))
    {}

    const std::u32string& text() const { return mText; }
    std::size_t cursor() const { return mCursor; }
    std::size_t bufferSize() const { return mBufferSize; }

    /// The texts of the log.
    const std::vector<std::u32string>& log() const { return mLog; }

    /// Presses any key but the back-quote. Returns whether the console consumes it, or nothing if the full line
    /// refuses a code point.
    std::optional<bool> press(int key, int modifiers, const std::u32string& typed)
    {
        const bool control = (modifiers & kControl) != 0;
        switch (key) {
        case KeyBackspace: backspace(control); return true;
        case KeyDelete: remove(control); return true;
        case KeyLeft: mCursor = control ? previousWord() : mCursor - (mCursor > 0); return true;
        case KeyRight: mCursor = control ? nextWord() : std::min(mCursor + 1, mLength); return true;
        case KeyHome: mCursor = 0; return true;
        case KeyEnd: mCursor = mLength; return true;
        case KeyReturn:
        case KeyEnter: submit(); return true;
        case KeyUp: older(); return true;
        case KeyDown: newer(); return true;
        case KeyTab: return complete(false);
        case KeyBacktab: return complete(true);
        case KeyPageUp:
        case KeyPageDown: return true;
        default: return typeAll(key == KeyV && control ? mClipboard : typed.substr(0, 1));
        }
    }

    /// Shrinks the buffer, as erasures do. The line must be empty.
    void shrinkBufferTo(std::size_t size) { mBufferSize = size; }

    /// Closes and opens the console.
    void reopen() { show({}); }

private:
    static bool isLetter(char32_t c) { return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z'); }

    static std::vector<std::u32string> split(const std::u32string& line)
    {
        std::vector<std::u32string> words;
        std::u32string word;
        for (const char32_t c : line) {
            if (c == U' ') {
                words.push_back(std::exchange(word, {}));
            } else {
                word.push_back(c);
            }
        }
        if (!word.empty()) {
            words.push_back(word);
        }
        return words;
    }

    static std::u32string masked(std::u32string line)
    {
        bool quoted = false;
        for (char32_t& c : line) {
            quoted ^= c == U'"';
            c = quoted && c == U' ' ? U'\uFFFF' : c;
        }
        return line;
    }

    std::size_t nextWord() const
    {
        std::size_t at = std::min(mCursor, mText.size());
        while (at < mText.size() && isLetter(mText[at])) {
            ++at;
        }
        while (at < mText.size() && !isLetter(mText[at])) {
            ++at;
        }
        return at;
    }

    std::size_t previousWord() const
    {
        std::size_t at = std::min(mCursor, mText.size());
        while (at > 0 && !isLetter(mText[at - 1])) {
            --at;
        }
        while (at > 0 && isLetter(mText[at - 1])) {
            --at;
        }
        return at;
    }

    std::optional<bool> typeAll(const std::u32string& typed)
    {
        for (const char32_t c : typed) {
            if (mCursor >= mBufferSize) {
                return std::nullopt;
            }
            mBufferSize += mCursor < mLength;
            mText.insert(mCursor, 1, c);
            ++mCursor;
            ++mLength;
            mOffered.clear();
        }
        return true;
    }

    void backspace(bool word)
    {
        if (mCursor == 0) {
            return;
        }
        const std::size_t from = word ? previousWord() : mCursor - 1;
        erase(from, mCursor - from);
        mCursor = from;
    }

    void remove(bool word)
    {
        if (mCursor == mLength) {
            return;
        }
        const std::size_t to = word ? std::max(nextWord(), mCursor) : mCursor + 1;
        erase(mCursor, to - mCursor);
    }

    /// Erases a part of the line, and from the text whatever the buffer holds of that part.
    void erase(std::size_t first, std::size_t count)
    {
        if (first < mText.size()) {
            const std::size_t inText = std::min(count, mText.size() - first);
            mText.erase(first, inText);
            mBufferSize -= inText;
        }
        mLength -= count;
        mOffered.clear();
    }

    void show(const std::u32string& line)
    {
        mText = line.substr(0, mBufferSize);
        mLength = mCursor = line.size();
    }

    void older()
    {
        if (!mRecords.empty()) {
            mSelected = std::min(mSelected + 1, mRecords.size());
            show(mRecords[mRecords.size() - mSelected]);
        }
    }

    void newer()
    {
        if (mSelected > 0) {
            --mSelected;
            show(mSelected == 0 ? std::u32string() : mRecords[mRecords.size() - mSelected]);
        }
    }

    void submit()
    {
        mLog.push_back(mText);
        const std::u32string line = masked(mText);
        const std::vector<std::u32string> words = split(line);
        if (words.empty()) {
            return;
        }
        mRecords.push_back(line);
        mSelected = 0;
        if (words.front() != U"cmd") {
            std::u32string name = words.front();
            std::replace(name.begin(), name.end(), U'\uFFFF', U' ');
            mLog.push_back(U"'" + name +
                           U"' is not a recognized command.  Type 'help' to list available commands.");
        }
        mLog.push_back({});
        show({});
    }

    bool complete(bool backwards)
    {
        const bool goesOn = !mOffered.empty();
        if (!goesOn) {
            const std::vector<std::u32string> words = split(mText);
            if (words.empty() || words.front() != U"cmd") {
                return false;
            }
            mOffered = mCandidates;
            mBase = mText;
        }
        const std::size_t last = mOffered.size() - 1;
        if (backwards) {
            mCandidate = goesOn && mCandidate > 0 ? mCandidate - 1 : last;
        } else {
            mCandidate = goesOn && mCandidate < last ? mCandidate + 1 : 0;
        }
        show(completedBase() + U' ' + mOffered[mCandidate]);
        return goesOn;
    }

    /// The base without the word to complete and the space before it.
    std::u32string completedBase() const
    {
        const std::size_t space = mBase.rfind(U' ');
        return space == std::u32string::npos ? std::u32string() : mBase.substr(0, space);
    }

    std::vector<std::u32string> mCandidates;
    std::u32string mClipboard;
    std::u32string mText;
    std::size_t mLength = 0;
    std::size_t mCursor = 0;
    std::size_t mBufferSize = 2048;
    std::vector<std::u32string> mRecords;
    std::size_t mSelected = 0; // 1 is the newest record, 0 is none
    std::vector<std::u32string> mOffered;
    std::u32string mBase;
    std::size_t mCandidate = 0;
    std::vector<std::u32string> mLog;
};

} // namespace zephyr::test

#endif
