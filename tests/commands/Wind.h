#ifndef ZEPHYR_TESTS_COMMANDS_WIND_H
#define ZEPHYR_TESTS_COMMANDS_WIND_H

#include "commands/CommandsFixture.h"

namespace zephyr::test {

enum class Mode
{
    Steady,
    Gusty,
    Still
};

inline std::vector<commands::EnumName<Mode>> enumNames(Mode)
{
    return {{Mode::Steady, U"steady"}, {Mode::Gusty, U"gusty"}, {Mode::Still, U"still"}};
}

/// A console with the command `wind`, which has every kind of parameter.
class WindFixture : public CommandsFixture
{
protected:
    WindFixture()
    {
        using namespace commands;
        add(mConsole,
            command(U"wind", U"The wind over the field.")
                .sub(
                    U"set", U"Sets speed and heading.",
                    [this](double speed, std::optional<double> heading) {
                        mSpeed = speed;
                        mHeading = heading;
                    },
                    argument(U"speed").between(0, 60).unit(U"m/s"), option(U"heading").between(0, 360))
                .sub(
                    U"mode", U"Sets how the wind blows.",
                    [this](Mode mode, bool loud, int steps) {
                        mMode = mode;
                        mLoud = loud;
                        mSteps = steps;
                    },
                    argument(U"mode"), flag(U"loud", U"Whether it howls."),
                    option(U"steps").choices(1, 10, 100).byDefault(10))
                .sub(U"show", U"Shows the wind.",
                     [this](Answer& answer) { answer << "Wind: " << mSpeed << " m/s"; }));
    }

    double mSpeed = 12;
    std::optional<double> mHeading;
    Mode mMode = Mode::Steady;
    bool mLoud = false;
    int mSteps = 0;
};

} // namespace zephyr::test

#endif
