// The interfaces to the desktop that the store needs. The store owns none of them.
#pragma once

namespace kelpa {

class AbilityReport;
class Accessibility;
class Applications;
class Pasteboard;
class WindowServer;
class Workspace;

/// References to objects that outlive their user.
struct Platform
{
    WindowServer& windowServer;
    Accessibility& accessibility;
    Applications& applications;
    Pasteboard& pasteboard;
    Workspace& workspace;
    AbilityReport& abilities;
};

} // namespace kelpa
