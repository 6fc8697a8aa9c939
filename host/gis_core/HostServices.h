// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::System {

/// What a program must answer for the code below it. Each program implements it once: windows on the desktop, text on
/// the terminal, a script of answers in tests. The default does nothing: nothing is shown, the answer is no, runs go
/// on.
class IBasicHostServices {
public:
    virtual ~IBasicHostServices() = default;

    /// Something that the user must see.
    virtual void Alert(std::string_view /*text*/) {}

    /// A yes/no question; 1 for yes.
    virtual int AskYesNo(std::string_view /*text*/) { return 0; }

    /// A line on the program's command line or console.
    virtual void WriteCommandLine(std::string_view /*text*/) {}

    /// Progress of a long operation: caption and how much is done, 0 to 1. Called often; the program draws as it likes.
    /// Answers whether to go on: 0 cancels the operation.
    virtual int ShowProgress(std::string_view /*caption*/, double /*done*/) { return 1; }
    virtual void HideProgress() {}
};

/// The services in force; the do-nothing default when none are set.
IBasicHostServices& HostServices();

/// Puts services in force for its own lifetime. Not owned.
class CHostServicesScope {
public:
    explicit CHostServicesScope(IBasicHostServices& services);
    ~CHostServicesScope();
    CHostServicesScope(const CHostServicesScope&) = delete;
    CHostServicesScope& operator=(const CHostServicesScope&) = delete;

private:
    IBasicHostServices* m_former;
};

} // namespace OLMGis::System

/// Named host operations as modules call them; they go to the services in force.
void acedAlert(std::string_view text);
void acutPrintf(std::string_view text);
