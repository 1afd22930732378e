#include "sandbox/Simulation.h"

#include <glm/geometric.hpp>
#include <glm/trigonometric.hpp>

#include <algorithm>
#include <cmath>

namespace zephyr::sandbox {

namespace {

constexpr double kGustSeconds = 1.5;      // in which a gust falls to 1/e
constexpr double kCalmGust = 0.01;        // metres a second; a weaker gust is none
constexpr double kClearance = 1.0 + 1e-9; // so that a rounded distance is never less than the radius

// Particles end and begin anew in turn, since the flow would gather them in the same few streams otherwise.
constexpr std::size_t kLifeSteps = 1800;

/// `value` moved by whole spans into 0 to under `span`.
double wrapped(double value, double span)
{
    const double inside = value - span * std::floor(value / span);
    return inside < span ? inside : 0.0; // a tiny negative value rounds up to the span itself
}

bool isInside(const Obstacle& obstacle, const glm::dvec2& position)
{
    const double x = position.x - obstacle.centre.x;
    const double y = position.y - obstacle.centre.y;
    return x * x + y * y < obstacle.radius * obstacle.radius;
}

} // namespace

Simulation::Simulation()
    : mObstacles{{{38.0, 30.0}, 7.0},  {{46.0, 66.0}, 9.0},  {{80.0, 44.0}, 11.0},
                 {{112.0, 20.0}, 6.0}, {{120.0, 68.0}, 8.0}, {{142.0, 42.0}, 5.0}}
{
    reset();
}

void Simulation::reset()
{
    mRandom.seed(std::mt19937::default_seed);
    mWind = Wind();
    mGust = 0.0;
    mStepCount = 0;
    mParticles.clear();
    setParticleCount(kDefaultParticleCount);
}

void Simulation::step()
{
    const AirFlow now = air();
    for (Particle& particle : mParticles) {
        particle.velocity = now.velocityAt(particle.position);
        const glm::dvec2 moved = particle.position + particle.velocity * kStepSeconds;
        particle.position = pushedOut({wrapped(moved.x, kFieldWidth), wrapped(moved.y, kFieldHeight)});
    }
    renewOldest(now);
    mGust *= std::exp(-kStepSeconds / kGustSeconds);
    if (mGust < kCalmGust) {
        mGust = 0.0;
    }
    ++mStepCount;
}

void Simulation::setParticleCount(std::size_t count)
{
    mParticles.resize(std::min(count, mParticles.size()));
    const AirFlow now = air();
    while (mParticles.size() < count) {
        mParticles.push_back(newParticle(now));
    }
}

void Simulation::renewOldest(const AirFlow& now)
{
    for (std::size_t i = mStepCount % kLifeSteps; i < mParticles.size(); i += kLifeSteps) {
        mParticles[i] = newParticle(now);
    }
}

Particle Simulation::newParticle(const AirFlow& now)
{
    const glm::dvec2 place = freePlace();
    return {place, now.velocityAt(place)};
}

AirFlow Simulation::air() const
{
    const double angle = glm::radians(mWind.heading);
    const glm::dvec2 direction(std::sin(angle), -std::cos(angle));
    return {direction * (mWind.speed + mGust), time(), mObstacles};
}

glm::dvec2 Simulation::freePlace()
{
    for (;;) {
        const double x = random(kFieldWidth);
        const double y = random(kFieldHeight);
        if (isFree({x, y})) {
            return {x, y};
        }
    }
}

double Simulation::random(double below)
{
    // Not a standard distribution: those differ from one standard library to the next.
    return below * static_cast<double>(mRandom()) / (static_cast<double>(std::mt19937::max()) + 1.0);
}

bool Simulation::isFree(const glm::dvec2& position) const
{
    return std::none_of(mObstacles.begin(), mObstacles.end(),
                        [&](const Obstacle& obstacle) { return isInside(obstacle, position); });
}

glm::dvec2 Simulation::pushedOut(const glm::dvec2& position) const
{
    for (const Obstacle& obstacle : mObstacles) {
        if (isInside(obstacle, position)) {
            const glm::dvec2 outwards = glm::normalize(position - obstacle.centre);
            return obstacle.centre + outwards * (obstacle.radius * kClearance);
        }
    }
    return position;
}

} // namespace zephyr::sandbox
