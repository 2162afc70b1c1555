// Program-wide flags set while the application data file is read: whether an
// agent files on the applicant's behalf, and the kind of application the
// parent program started us for. The print menu presets its agent options
// from them.
#pragma once

namespace kelvary {

// The application is filed by an agent (代理申請) on the applicant's behalf.
extern bool gblnRepresentation;
// Application kind code handed over by the parent program; 1 together with
// gblnRepresentation presets the agent options of the print menu.
extern long glngSinseiType;

}  // namespace kelvary
