// refused_calls.h - calls of the C library that the system refuses, for every file of the program
// that links refused_calls.cpp: for a moment, for good, or half way. Nothing is refused unless
// asked.
#pragma once

#include <QString>

enum Call { Rename, Flush, Cut, Lock, Read, Permit, kCalls };

const int kEveryTime = 1000000;

// While it lives, the call is refused so often; 0 times: it is counted.
class Refused {
public:
    Refused(Call call, int error, int times = kEveryTime);
    ~Refused();
    int seen() const; // calls in all

private:
    Q_DISABLE_COPY(Refused)
    Call m_call;
};

// Nobody sleeps: what was asked for, ms, since the last refusal began or it was set.
extern long restedMs;
// A file that goes just before each lock until 20 ms were rested, and is made again by the next
// process if so told; empty: none.
extern QString lostLock;
extern bool isLostLockMadeAgain;
