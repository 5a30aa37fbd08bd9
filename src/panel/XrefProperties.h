#pragma once

namespace Trove {

/// The thirty properties a reference can show. The display names are not in value order
/// (see CXrefProperty); 8 to 28 are answered by the host's item classes only.
enum class XrefProperties : int {
    Name = 0,
    Status = 1,
    Size = 2,
    Type = 3,
    Date = 4,
    FoundAt = 5,
    SavedPath = 6,
    FileVersion = 7,
    HostProperty8 = 8,
    HostProperty9 = 9,
    HostProperty10 = 10,
    HostProperty11 = 11,
    HostProperty12 = 12,
    HostProperty13 = 13,
    HostProperty14 = 14,
    HostProperty15 = 15,
    HostProperty16 = 16,
    HostProperty17 = 17,
    HostProperty18 = 18,
    HostProperty19 = 19,
    HostProperty20 = 20,
    HostProperty21 = 21,
    HostProperty22 = 22,
    HostProperty23 = 23,
    HostProperty24 = 24,
    HostProperty25 = 25,
    HostProperty26 = 26,
    HostProperty27 = 27,
    HostProperty28 = 28,
    PendingRelativePath = 29,
};

} // namespace Trove
