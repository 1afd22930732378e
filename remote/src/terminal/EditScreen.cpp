#include "terminal/EditScreen.h"

#include <algorithm>
#include <array>
#include <climits>

#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace zephyr::console::remote {

namespace {

constexpr char kProgram[] = "zephyr-console"; // whose lines in ~/.editrc are meant
constexpr ScreenPlace kUsualSize{24, 80};

struct Binding
{
    const wchar_t* key;
    const wchar_t* function;
};

// What people know from shells, beside what libedit binds.
constexpr std::array kBindings{
    Binding{L"^R", L"em-inc-search-prev"},      Binding{L"^W", L"ed-delete-prev-word"},
    Binding{L"\\e[1;5C", L"em-next-word"},      Binding{L"\\e[1;5D", L"ed-prev-word"},
    Binding{L"\\e[H", L"ed-move-to-beg"},       Binding{L"\\e[F", L"ed-move-to-end"},
    Binding{L"\\e[1~", L"ed-move-to-beg"},      Binding{L"\\e[4~", L"ed-move-to-end"},
    Binding{L"\\e[3~", L"ed-delete-next-char"},
};

constexpr wchar_t kComplete[] = L"zephyr-complete";
constexpr wchar_t kInterrupt[] = L"zephyr-interrupt";
constexpr wchar_t kStop[] = L"zephyr-stop";

void bind(EditLine* edit, const Binding& binding)
{
    el_wset(edit, EL_BIND, binding.key, binding.function, nullptr);
}

void bindForBothMaps(EditLine* edit, const Binding& binding)
{
    bind(edit, binding);
    el_wset(edit, EL_BIND, L"-a", binding.key, binding.function, nullptr);
}

/// Otherwise libedit would throw away what was typed ahead, and be stopped in the background.
void endEditing(EditLine* edit)
{
    el_set(edit, EL_EDITMODE, 0);
    el_end(edit);
}

} // namespace

EditScreen::EditScreen(std::FILE* in, std::FILE* out, const std::wstring& prompt,
                       const EditFunctions& functions, HistoryW* history)
    : mIn(::fileno(in)),
      mOut(out),
      mPrompt(prompt),
      mClientData(functions.clientData),
      mEdit(el_init(kProgram, in, out, stderr), endEditing)
{
    EditLine* const edit = mEdit.get();
    el_wset(edit, EL_CLIENTDATA, this);
    el_wset(edit, EL_PROMPT, promptOf);
    el_wset(edit, EL_EDITOR, L"emacs");
    el_wset(edit, EL_HIST, history_w, history);
    el_wset(edit, EL_GETCFN, functions.key);
    el_wset(edit, EL_ADDFN, kComplete, L"Complete the word", functions.complete);
    el_wset(edit, EL_ADDFN, kInterrupt, L"Empty the line", functions.interrupt);
    el_wset(edit, EL_ADDFN, kStop, L"Stop the program", functions.stop);
    for (const Binding& binding : kBindings) {
        bind(edit, binding);
    }
    el_source(edit, nullptr);
    bind(edit, {L"^I", kComplete});
    bindForBothMaps(edit, {L"^C", kInterrupt});
    bindForBothMaps(edit, {L"^Z", kStop});
    mSize = size();
}

void* EditScreen::clientData(EditLine* edit)
{
    void* screen = nullptr;
    el_wget(edit, EL_CLIENTDATA, &screen);
    return static_cast<EditScreen*>(screen)->mClientData;
}

wchar_t* EditScreen::promptOf(EditLine* edit)
{
    void* screen = nullptr;
    el_wget(edit, EL_CLIENTDATA, &screen);
    return static_cast<EditScreen*>(screen)->mPrompt.data();
}

bool EditScreen::edit(std::wstring& line)
{
    mSize = size(); // libedit looks as well
    int length = 0;
    const wchar_t* const text = el_wgets(mEdit.get(), &length);
    if (text == nullptr) {
        return false;
    }
    line.assign(text, static_cast<std::size_t>(length));
    return true;
}

std::wstring_view EditScreen::text() const
{
    const LineInfoW* const line = el_wline(mEdit.get());
    return {line->buffer, static_cast<std::size_t>(line->lastchar - line->buffer)};
}

std::wstring_view EditScreen::beforeCursor() const
{
    const LineInfoW* const line = el_wline(mEdit.get());
    return {line->buffer, static_cast<std::size_t>(line->cursor - line->buffer)};
}

void EditScreen::clear()
{
    const auto length = static_cast<int>(text().size());
    el_cursor(mEdit.get(), length);
    el_deletestr(mEdit.get(), length);
}

void EditScreen::replaceFrom(std::size_t from, const std::wstring& text)
{
    el_deletestr(mEdit.get(), static_cast<int>(beforeCursor().size() - from));
    el_winsertstr(mEdit.get(), text.c_str());
}

void EditScreen::erase()
{
    adoptSize();
    const int row = std::min(placeOf(beforeCursor()).row, mSize.row - 1); // what has scrolled away stays
    QByteArray bytes = "\r";
    if (row > 0) {
        bytes += "\x1b[" + QByteArray::number(row) + 'A';
    }
    write(bytes + "\x1b[J");
}

void EditScreen::draw()
{
    adoptSize();
    el_set(mEdit.get(), EL_REFRESH);
}

void EditScreen::leave(const char* mark)
{
    const ScreenPlace cursor = placeOf(beforeCursor());
    const ScreenPlace end = placeOf(text());
    QByteArray bytes;
    if (end.row > cursor.row) {
        bytes += "\x1b[" + QByteArray::number(end.row - cursor.row) + 'B';
    }
    write(bytes + "\x1b[" + QByteArray::number(end.column + 1) + 'G' + mark + "\r\n");
}

void EditScreen::setRaw(bool raw) { el_set(mEdit.get(), EL_PREP_TERM, raw ? 1 : 0); }

void EditScreen::keepTerminalKeys()
{
    termios settings{};
    if (::tcgetattr(mIn, &settings) != 0 || (settings.c_lflag & ICANON) != 0) {
        return;
    }
    if (settings.c_cc[VINTR] != _POSIX_VDISABLE || settings.c_cc[VSUSP] != _POSIX_VDISABLE ||
        (settings.c_iflag & IXON) != 0) {
        settings.c_cc[VINTR] = _POSIX_VDISABLE;
        settings.c_cc[VSUSP] = _POSIX_VDISABLE;
        settings.c_iflag &= ~static_cast<tcflag_t>(IXON);
        ::tcsetattr(mIn, TCSADRAIN, &settings);
    }
}

bool EditScreen::write(const QByteArray& bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, mOut) == size && std::fflush(mOut) == 0;
}

ScreenPlace EditScreen::size() const
{
    winsize size{};
    if (::ioctl(mIn, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
        return kUsualSize;
    }
    return {size.ws_row, size.ws_col};
}

/// Where the cursor is behind `text`, counted from the row of the prompt.
ScreenPlace EditScreen::placeOf(std::wstring_view text) const
{
    return placeAfter(text, placeAfter(mPrompt, {}, mSize.column), mSize.column);
}

/// Takes note of a new size, which may come before the signal that tells of it.
void EditScreen::adoptSize()
{
    if (const ScreenPlace now = size(); now != mSize) {
        mSize = now;
        el_resize(mEdit.get());
    }
}

} // namespace zephyr::console::remote
