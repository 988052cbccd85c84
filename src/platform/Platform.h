// What Kelpa needs of a desktop, gathered: the store is built from it and owns none of it.
#pragma once

namespace kelpa {

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
};

} // namespace kelpa
