#ifndef ZEPHYR_TESTS_SUPPORT_ACCESSIBLEEVENTS_H
#define ZEPHYR_TESTS_SUPPORT_ACCESSIBLEEVENTS_H

#include <cstddef>
#include <string>
#include <vector>

class QAccessibleEvent;
class QAccessibleInterface;

namespace zephyr::test {

/// Listens, as assistive technology does, to what is told while this object lives. One at a time.
///
/// Only Qt's own platform plugins can tell Qt that somebody listens. So the source file of this class replaces the two
/// functions of QAccessible by which Qt and its users ask that, and tell what happened, in the program of the test.
class AccessibleEvents
{
public:
    explicit AccessibleEvents(bool isListening = true);
    ~AccessibleEvents();
    AccessibleEvents(const AccessibleEvents&) = delete;
    AccessibleEvents& operator=(const AccessibleEvents&) = delete;

    /// The object that lives, or null.
    static AccessibleEvents* current();

    /// Whether Qt is told that somebody listens. What is told nevertheless is recorded too.
    bool isListening() const { return mIsListening; }
    void setListening(bool isListening) { mIsListening = isListening; }

    /// What was told since the last call: each event as what it is and what it is about.
    std::vector<std::string> take();

    /// Whether that was told since the last take().
    bool has(const std::string& event) const;

    /// The number of code units that all events inserted.
    std::size_t insertedUnits() const { return mInsertedUnits; }

    void record(QAccessibleEvent& event);

private:
    bool mIsListening;
    std::vector<std::string> mHeard;
    std::size_t mInsertedUnits = 0;
};

/// What is a terminal, of `around` and all below it, or null.
QAccessibleInterface* terminalBelow(QAccessibleInterface* around);

} // namespace zephyr::test

#endif
