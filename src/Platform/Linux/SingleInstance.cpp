// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "Platform/SingleInstance.h"

namespace {
class Claimed : public SingleInstance {
    void onActivation(std::function<void()>) override {}
};
} // namespace

std::unique_ptr<SingleInstance> SingleInstance::claim() { return std::make_unique<Claimed>(); }
