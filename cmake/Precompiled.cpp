// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// Empty: the targets that own a precompiled header need a source.
