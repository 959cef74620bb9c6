#pragma once

// The graph library's header is written with Qt's lower-case keywords, which this program is compiled without. They
// exist while the header is read and not after it. Always include this in place of <qcustomplot.h>.

#pragma push_macro("signals")
#pragma push_macro("foreach")
#undef signals
#undef foreach
#define signals Q_SIGNALS
#define foreach Q_FOREACH

#include <qcustomplot.h>

#pragma pop_macro("signals")
#pragma pop_macro("foreach")
