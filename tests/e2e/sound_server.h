// tests/e2e/sound_server.h -- sound servers without a sound card, each a process of the test's
// own, and recordings of what they play.
#pragma once

#include "tests/e2e/process.h"

#include <cstdio>
#include <string>
#include <sys/types.h>
#include <vector>

/// PulseAudio with a sink that plays to nobody. While it lives, programs that the test starts
/// find it, and no other server.
class PulseServer {
  public:
    explicit PulseServer(const std::string &folder);
    ~PulseServer();
    PulseServer(const PulseServer &) = delete;
    PulseServer &operator=(const PulseServer &) = delete;

    bool ready() const;

    /// Ends it at once, as a crash would.
    void crash();

  private:
    pid_t server = -1;
    std::string socket;
};

/// JACK with its driver for machines without a card, with blocks of so many frames.
class JackServer {
  public:
    explicit JackServer(int frames);
    ~JackServer();
    JackServer(const JackServer &) = delete;
    JackServer &operator=(const JackServer &) = delete;

    bool ready() const;
    void crash();

    /// True when a program's two channels are connected to the card's.
    bool connected() const;

  private:
    pid_t server = -1;
};

/// A hand at the JACK server that is running: two MIDI keyboards and a recorder, 48000 Hz.
class JackHand {
  public:
    explicit JackHand(const std::string &folder);
    ~JackHand();
    JackHand(const JackHand &) = delete;
    JackHand &operator=(const JackHand &) = delete;

    bool ready() const {
        return working;
    }

    /// Sends a message from keyboard 0 or 1.
    bool send(int keyboard, int status, int data1, int data2);

    /// Records this program output from now on.
    bool listen(const std::string &output);

    /// What is heard in this time.
    std::vector<float> record(Duration time);

  private:
    bool obeys(const std::string &command);

    pid_t process = -1;
    FILE *to = nullptr;
    FILE *from = nullptr;
    bool working = false;
    std::string file;
};

/// What the null sink plays while this runs, one channel at 44100 Hz.
class Recording {
  public:
    explicit Recording(const std::string &folder);
    ~Recording();
    Recording(const Recording &) = delete;
    Recording &operator=(const Recording &) = delete;

    /// Ends it a little after what was played last; the samples.
    std::vector<float> finish();

  private:
    pid_t recorder = -1;
    std::string file;
};

/// What sox measures in a stretch of samples: its line of this name, as "Maximum amplitude".
double measured(const std::vector<float> &samples, const std::string &what,
                const std::string &folder, int rate = 44100);
