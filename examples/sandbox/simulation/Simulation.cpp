#include "sandbox/simulation/Simulation.h"

#include <glm/geometric.hpp>
#include <glm/trigonometric.hpp>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zephyr::sandbox {

namespace {

constexpr double kGustSeconds = 1.5;      // until a gust has fallen to 1/e
constexpr double kCalmGust = 0.01;        // metres a second; a weaker gust ends
constexpr double kClearance = 1.0 + 1e-9; // keeps a rounded distance from being less than the radius

// Particles start again one after another, or else the flow would gather them in a few streams.
constexpr std::size_t kLifeSteps = 1800;

// The obstacles leave room for particles wherever they are placed.
static_assert(kMaxObstacleCount * kMaxObstacleRadius * kMaxObstacleRadius * std::numbers::pi <
              0.8 * kFieldWidth * kFieldHeight);

std::vector<Obstacle> firstObstacles()
{
    return {{{38.0, 30.0}, 7.0},  {{46.0, 66.0}, 9.0},  {{80.0, 44.0}, 11.0},
            {{112.0, 20.0}, 6.0}, {{120.0, 68.0}, 8.0}, {{142.0, 42.0}, 5.0}};
}

bool isInside(const Obstacle& obstacle, const glm::dvec2& position)
{
    const glm::dvec2 way = shortestWay(obstacle.centre, position);
    // Written without "<" so that a position that is not a number counts as inside, and is left.
    return !(way.x * way.x + way.y * way.y >= obstacle.radius * obstacle.radius);
}

/// The place outside `obstacle` that is nearest to `position`; not a number if that is the very centre.
glm::dvec2 pushedOutOf(const Obstacle& obstacle, const glm::dvec2& position)
{
    const glm::dvec2 outwards = glm::normalize(shortestWay(obstacle.centre, position));
    return wrapped(obstacle.centre + outwards * (obstacle.radius * kClearance));
}

} // namespace

Simulation::Simulation() { reset(); }

void Simulation::reset()
{
    mRandom.seed(std::mt19937::default_seed);
    mObstacles = firstObstacles();
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
        moveParticle(particle, now);
    }
    renewOldest(now);
    mGust *= std::exp(-kStepSeconds / kGustSeconds);
    if (mGust < kCalmGust) {
        mGust = 0.0;
    }
    ++mStepCount;
}

void Simulation::moveParticle(Particle& particle, const AirFlow& now)
{
    particle.velocity = now.velocityAt(particle.position);
    particle.position = wrapped(particle.position + particle.velocity * kStepSeconds);
    if (const std::optional<std::size_t> index = obstacleAt(particle.position)) {
        particle.position = pushedOutOf(mObstacles[*index], particle.position);
        if (!isFree(particle.position)) { // in another obstacle that overlaps this one
            particle = newParticle(now);
        }
    }
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
    const auto first = static_cast<std::size_t>(mStepCount % kLifeSteps);
    for (std::size_t i = first; i < mParticles.size(); i += kLifeSteps) {
        mParticles[i] = newParticle(now);
    }
}

void Simulation::renewCovered()
{
    const AirFlow now = air();
    for (Particle& particle : mParticles) {
        if (!isFree(particle.position)) {
            particle = newParticle(now);
        }
    }
}

std::optional<std::size_t> Simulation::obstacleAt(const glm::dvec2& place) const
{
    for (std::size_t i = mObstacles.size(); i > 0; --i) {
        if (isInside(mObstacles[i - 1], place)) {
            return i - 1;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> Simulation::addObstacle(const Obstacle& obstacle)
{
    if (mObstacles.size() >= kMaxObstacleCount) {
        return std::nullopt;
    }
    mObstacles.push_back(obstacle);
    renewCovered();
    return mObstacles.size() - 1;
}

void Simulation::resizeObstacle(std::size_t index, double radius)
{
    mObstacles[index].radius = radius;
    renewCovered();
}

void Simulation::removeObstacle(std::size_t index)
{
    mObstacles.erase(mObstacles.begin() + static_cast<std::ptrdiff_t>(index));
}

void Simulation::clearObstacles() { mObstacles.clear(); }

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
    // The standard distributions differ from one standard library to the next.
    return below * static_cast<double>(mRandom()) / (static_cast<double>(std::mt19937::max()) + 1.0);
}

bool Simulation::isFree(const glm::dvec2& position) const { return !obstacleAt(position); }

} // namespace zephyr::sandbox
