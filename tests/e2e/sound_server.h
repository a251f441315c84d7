// tests/e2e/sound_server.h -- sound servers without a sound card, each a process of the test's
// own, and recordings of what they play.
#pragma once

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

/// What sox measures in a stretch of samples: its line of this name, as "RMS     amplitude".
double measured(const std::vector<float> &samples, const std::string &what,
                const std::string &folder);
