#include "app/viewer/picture/background_light.h"

#include <new>
#include <utility>

namespace tessara {

namespace {

/// Nobody waits for the light any more.
struct Abandoned {};

}  // namespace

BackgroundLight::BackgroundLight(std::function<void()> ready) : ready_(std::move(ready)), thread_([this] { Run(); }) {}

BackgroundLight::~BackgroundLight()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void BackgroundLight::Begin(const LightConditions& conditions)
{
    last_ = conditions;
    snapshot_.reset();
    const std::lock_guard lock(mutex_);
    request_.reset();
    result_.reset();
    ++orders_;
}

void BackgroundLight::Follow(const ElevationData& data, const LightConditions& conditions)
{
    if (conditions == last_)
        return;
    // While the sun is being moved the heights are copied once.
    auto heights = conditions.heights == snapshotOf_ ? snapshot_.lock() : nullptr;
    if (!heights)
        heights = std::make_shared<const ElevationData>(data);
    snapshot_ = heights;
    snapshotOf_ = conditions.heights;
    Request request{std::move(heights), conditions};
    last_ = conditions;
    {
        const std::lock_guard lock(mutex_);
        request_ = std::move(request);
        ++orders_;
    }
    changed_.notify_one();
}

std::unique_ptr<LightMap> BackgroundLight::Take()
{
    const std::lock_guard lock(mutex_);
    return std::move(result_);
}

bool BackgroundLight::IsBusy()
{
    const std::lock_guard lock(mutex_);
    return busy_ || request_.has_value();
}

void BackgroundLight::Run()
{
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return ending_ || request_; });
        if (ending_)
            return;
        const Request request = std::move(*request_);
        const unsigned order = orders_;
        request_.reset();
        busy_ = true;
        lock.unlock();
        std::unique_ptr<LightMap> map;
        const auto goOn = [this, order](double) {
            if (ending_ || orders_ != order)
                throw Abandoned{};
        };
        try {
            map = std::make_unique<LightMap>(
                MakeLightMap(*request.data, request.conditions.exaggeration, request.conditions.sun, kSide, goOn));
        } catch (const Abandoned&) {
        } catch (const std::bad_alloc&) {
            // The light stays as it is.
        }
        lock.lock();
        busy_ = false;
        if (!map || ending_ || order != orders_)
            continue;
        result_ = std::move(map);
        lock.unlock();
        ready_();
        lock.lock();
    }
}

}  // namespace tessara
