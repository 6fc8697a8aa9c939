// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/HostServices.h"

namespace OLMGis::System {

namespace {

IBasicHostServices*& InForce() {
    static IBasicHostServices none;
    static IBasicHostServices* inForce = &none;
    return inForce;
}

} // namespace

IBasicHostServices& HostServices() {
    return *InForce();
}

CHostServicesScope::CHostServicesScope(IBasicHostServices& services) : m_former(InForce()) {
    InForce() = &services;
}

CHostServicesScope::~CHostServicesScope() {
    InForce() = m_former;
}

} // namespace OLMGis::System

void acedAlert(std::string_view text) {
    OLMGis::System::HostServices().Alert(text);
}

void acutPrintf(std::string_view text) {
    OLMGis::System::HostServices().WriteCommandLine(text);
}
