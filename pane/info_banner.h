// info_banner.h - when the information banner at the top of the pane comes and goes.
// Owns: the visible flag.
#pragma once

namespace quillon {

const int kBannerFirstMs = 30 * 1000; // from start-up to the first showing
const int kBannerSeenMs = 30 * 1000; // from the first move of the pointer to its end
const int kBannerPauseMs = 20 * 60 * 1000; // hidden between two showings

bool isBannerVisible();
void hideBanner(); // at the start of a run
void startBanner(); // it shows after the first delay
void bannerTimerFired();
// The pointer moved over the pane: a banner that shows is hidden some time after the first move.
void bannerSeen();

} // namespace quillon
