#include "finder/browse_session.h"

namespace quillon {

static BrowseSession g_session;

BrowseSession& browseSession()
{
    return g_session;
}

void forgetMatches(BrowseSession* session)
{
    session->matches.clear();
    session->ordinals.clear();
    session->matchCount = 0;
    session->matchOrdinal = kOrdinalUnknown;
}

void forgetApplied(BrowseSession* session)
{
    if (session->tablesState == Applied)
        session->tablesState = Made;
}

} // namespace quillon
