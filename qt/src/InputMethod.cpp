#include "InputMethod.h"

#include "Gui.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodQueryEvent>

namespace zephyr::console::qt {

InputMethod::InputMethod(QObject& filter, QObject* events) : mFilter(&filter), mEvents(events) {}

void InputMethod::watchFocusObject(QObject* focused)
{
    if (!mFocused.isNull() && !mFilter.isNull()) {
        mFocused->removeEventFilter(mFilter);
    }
    mFocused = focused == mEvents ? nullptr : focused;
    if (!mFocused.isNull() && !mFilter.isNull()) {
        mFocused->installEventFilter(mFilter);
    }
}

bool InputMethod::watches(const QObject* receiver) const
{
    return receiver != nullptr && (receiver == mEvents || receiver == mFocused);
}

bool InputMethod::isOn() { return QInputMethod::queryFocusObject(Qt::ImEnabled, {}).toBool(); }

void InputMethod::answer(QInputMethodQueryEvent& query, QObject& asked, bool isWanted)
{
    asked.event(&query);
    query.setValue(Qt::ImEnabled, isWanted);
    query.setValue(Qt::ImHints, static_cast<int>(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase));
}

void InputMethod::restart() const
{
    if (hasGui() && watches(QGuiApplication::focusObject())) {
        QGuiApplication::inputMethod()->reset();
        QGuiApplication::inputMethod()->update(Qt::ImEnabled | Qt::ImHints);
    }
}

} // namespace zephyr::console::qt
