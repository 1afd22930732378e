#include "InputRows.h"

#include "RowBreaks.h"
#include "zephyr/console/ConsoleSnapshot.h"
#include "zephyr/console/Texts.h"

#include <QChar>

#include <algorithm>
#include <string_view>

namespace zephyr::console::qt {

namespace {

constexpr char32_t kNoBreakSpace = U'\u00A0'; // as wide as a space, and no blank that hangs over a row's end

} // namespace

std::u32string withSigns(std::u32string text)
{
    constexpr char32_t kControlPictures =
        0x2400; // Unicode's block of that name, in the order of the characters
    constexpr char32_t kDelete = 0x7F;
    constexpr char32_t kDeletePicture = 0x2421;
    constexpr char32_t kLastControl = 0x9F;
    constexpr char32_t kLineFeedSign = 0x21B5;
    for (char32_t& c : text) {
        if (c == U'\n' || c == 0x2028 || c == 0x2029 || c == 0x85) { // each would end a line
            c = kLineFeedSign;
        } else if (c < U' ' && c != U'\t') {
            c += kControlPictures;
        } else if (c == kDelete) {
            c = kDeletePicture;
        } else if (c > kDelete && c <= kLastControl) {
            c = QChar::ReplacementCharacter; // there are no pictures of these
        }
    }
    return text;
}

InputRows::InputRows(const ConsoleInput& input, const QString& composition, const ViewFont& font,
                     double width)
{
    constexpr std::u32string_view kPromptText(kPrompt);
    const std::size_t place = std::min<std::size_t>(input.cursor, input.text.size());
    const std::u32string composed = composition.toStdU32String();
    mCompositionBegin = kPromptText.size() + place;
    mCursor = mCompositionBegin + composed.size();

    std::u32string shown = input.text;
    shown.insert(place, composed);
    shown = std::u32string(kPromptText) + withSigns(shown);
    std::replace(shown.begin(), shown.end(), U' ', kNoBreakSpace);
    shown += kNoBreakSpace; // where the cursor stands at the end

    const double hanging = static_cast<double>(kPromptText.size()) * font.spaceWidth();
    const double x = hanging * 2 <= width ? hanging : 0.0;
    std::size_t begin = 0;
    for (const std::size_t end : breakIntoRows(shown, font, {width, width - x}, Wrap::Anywhere)) {
        mRows.push_back(
            {kInputLine, begin, end, begin == 0 ? 0.0 : x, Tone::Input, shown.substr(begin, end - begin)});
        begin = end;
    }
}

std::size_t InputRows::cursorRow() const
{
    const auto after =
        std::upper_bound(mRows.begin(), mRows.end(), mCursor,
                         [](std::size_t offset, const Row& row) { return offset < row.begin; });
    return static_cast<std::size_t>(after - mRows.begin()) - 1;
}

} // namespace zephyr::console::qt
