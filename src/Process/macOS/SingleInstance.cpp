// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Process/SingleInstance.h"

#include "Process/macOS/Bundle.h"
#include "Process/macOS/InstanceLock.h"

namespace {

/// The system keeps one instance of a bundle at its place, and tells it when the user opens that one again. The lock
/// keeps a copy elsewhere from being a second one.
class BundleClaim : public SingleInstance {
public:
    void onActivation(std::function<void()> activate) override { m_activate = std::move(activate); }

    InstanceLock lock{InstanceLock::usualPath()};

private:
    std::function<void()> m_activate = [] {};
    const std::shared_ptr<void> m_reopening = Bundle::onReopening([this] { m_activate(); });
};

} // namespace

std::unique_ptr<SingleInstance> SingleInstance::claim()
{
    auto claim = std::make_unique<BundleClaim>();
    const auto other = claim->lock.otherHolder();
    if (!other)
        return claim;
    Bundle::open(*other);
    return nullptr;
}
