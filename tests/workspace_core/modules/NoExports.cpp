// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// A sound library that is no module.
extern "C" __attribute__((visibility("default"))) int Answer() {
    return 42;
}
