#include <orvex/parse.h>

#include "build_identity.h"

extern const sw_version_record sw_version = {ORVEX_RELEASE, ORVEX_BUILD};
