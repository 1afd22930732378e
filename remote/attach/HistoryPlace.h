#ifndef ZEPHYR_ATTACH_HISTORYPLACE_H
#define ZEPHYR_ATTACH_HISTORYPLACE_H

#include <QString>

namespace zephyr::attach {

/// The file in which lines that were typed are kept: `$XDG_STATE_HOME/zephyr-console/history`, where that variable isn't an absolute
/// path `~/.local/state/zephyr-console/history`. Makes its folder, for the user alone, if it isn't there.
QString historyFile();

} // namespace zephyr::attach

#endif
