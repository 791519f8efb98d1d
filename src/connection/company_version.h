// The release of a company's data, as the text file "VERSION.TXT" in its folder tells it.
#pragma once

namespace larkmoor {

/// Release of the company in `gCompanyPath`. The first field of its "VERSION.TXT" tells it: "12.00"
/// and "F12.00" both mean release 9. 0 where the file cannot be read or its first field begins with
/// no number.
double ReadCompanyVersion();

}  // namespace larkmoor
