// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "flow/FormFields.h"

namespace CalculatorForm = Flow;
