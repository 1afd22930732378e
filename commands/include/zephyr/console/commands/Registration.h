#ifndef ZEPHYR_CONSOLE_COMMANDS_REGISTRATION_H
#define ZEPHYR_CONSOLE_COMMANDS_REGISTRATION_H

#include "zephyr/console/commands/detail/Export.h"

#include <memory>
#include <string>

namespace zephyr::console {
class Console;
}

namespace zephyr::console::commands {

namespace detail {
struct Place;
}

/// What add() returns. A command that is added stays until the console ends; whoever makes a Registration of this value
/// decides when it goes.
class Added
{
public:
    /// \param place where the command is registered; expires with the command.
    explicit Added(std::weak_ptr<const detail::Place> place) : mPlace(std::move(place)) {}

private:
    friend class Registration;

    std::weak_ptr<const detail::Place> mPlace;
};

/// Removes a command when it is destroyed: a member of the object, or of the plugin, that the command needs.
///
///     class Lamp
///     {
///     public:
///         explicit Lamp(zephyr::console::Console& console)
///             : mSwitch(add(console, U"lamp", U"Switches the lamp.", [this](bool on) { mIsOn = on; },
///                           argument(U"state")))
///         {}
///
///         bool isOn() const { return mIsOn; }
///
///     private:
///         bool mIsOn = false;
///         zephyr::console::commands::Registration mSwitch;
///     };
///
/// It may outlive the console. A command of the same name that replaced its own stays. It must not be a part of what a
/// command's function captures, since a command's destructor must not use the console.
class Registration
{
public:
    /// Removes nothing.
    Registration() = default;

    /// Removes the command that add() added.
    Registration(Added added) : mPlace(std::move(added.mPlace)) {}

    /// Takes over the other's command.
    Registration(Registration&& other) noexcept : mPlace(std::move(other.mPlace)) { other.mPlace.reset(); }

    /// Removes its own command, and takes over the other's.
    Registration& operator=(Registration&& other) noexcept
    {
        if (this != &other) {
            remove();
            mPlace = std::move(other.mPlace);
            other.mPlace.reset();
        }
        return *this;
    }

    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

    ~Registration() { remove(); }

    /// Whether its command is still registered.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT bool isActive() const;

    /// Removes the command now, as Console::unregisterCommand() does.
    ZEPHYR_CONSOLE_COMMANDS_EXPORT void remove() noexcept;

    /// Leaves the command to the console.
    void release() { mPlace.reset(); }

private:
    std::weak_ptr<const detail::Place> mPlace;
};

/// Removes the command `name`, as Console::unregisterCommand() does. \return false if there is none.
ZEPHYR_CONSOLE_COMMANDS_EXPORT bool remove(Console& console, const std::u32string& name);

} // namespace zephyr::console::commands

#endif
