#ifndef ZEPHYR_ATTACH_ANSWER_H
#define ZEPHYR_ATTACH_ANSWER_H

#include "protocol/Entry.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace zephyr::attach {

/// Takes from the entries that a line writes those that answer it: no echoes of lines, and no empty entry that only ends the
/// output of a command.
class Answer
{
public:
    /// Takes the next entry that a line wrote. \return what is to be printed now, none to two entries.
    std::vector<console::remote::Entry> add(const console::remote::Entry& entry);

    /// Whether `reason` is in the last entries that were added, so that it needn't be said again.
    bool says(const QString& reason) const;

private:
    std::vector<console::remote::Entry> mHeldBack; // an empty entry, which may be the last one, or none
    QStringList mLast;                             // texts, few
};

} // namespace zephyr::attach

#endif
