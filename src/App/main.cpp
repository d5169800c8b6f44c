// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

#include "App/VanteloApp.h"

int main(int argc, char **argv) { return VanteloApp::main(argc, argv); }
