#ifndef ZEPHYR_ATTACH_UTF8LOCALE_H
#define ZEPHYR_ATTACH_UTF8LOCALE_H

namespace zephyr::attach {

/// Names a UTF-8 locale in the environment if it names another one, none, or one that is not installed. Qt would take one
/// by itself, but complain on standard error. Call this before the application object is made, with no other thread.
void ensureUtf8Locale();

} // namespace zephyr::attach

#endif
