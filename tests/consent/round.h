// One round: a garage, a campaign, and everything that can happen to it.

#pragma once

#include "consent/story.h"

namespace qbx::consent {

struct RoundWishes {
  quint64 seed = 1;
  int customers = 0;  ///< of the garage; 0: a few
};

/// The result of a round.
struct RoundCounts {
  qint64 rows = 0;
  qint64 arrived = 0;
  qint64 letters = 0;
  qint64 runs = 0;
  qint64 deaths = 0;

  RoundCounts& operator+=(const RoundCounts& other) {
    rows += other.rows;
    arrived += other.arrived;
    letters += other.letters;
    runs += other.runs;
    deaths += other.deaths;
    return *this;
  }
};

/// Plays a round. Seed, number and customers determine all of it.
RoundCounts PlayRound(const RoundWishes& wishes, int number, Story& story);

}  // namespace qbx::consent
