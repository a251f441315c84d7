#include "tests/e2e/sound_server.h"

#include "tests/e2e/process.h"
#include "tests/support/command_output.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace {

constexpr Duration patience(15000);
constexpr Duration tail(300); // until the last sound has been recorded

/// Starts a command with nothing to say.
pid_t begin(const std::vector<std::string> &command, const std::string &home) {
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        die_with_parent(parent, SIGKILL);
        const int nothing = open("/dev/null", O_RDWR);
        for (const int end : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            dup2(nothing, end);
        }
        if (!home.empty()) {
            setenv("HOME", home.c_str(), 1);
            setenv("XDG_RUNTIME_DIR", home.c_str(), 1);
        }
        execute(command);
    }
    return child;
}

void end_at(pid_t &process, int signal) {
    if (process > 0) {
        end_process(process, signal);
        process = -1;
    }
}

std::string content_of(const std::string &file) {
    std::ifstream from(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(from), {}};
}

std::vector<float> floats_of(const std::string &bytes) {
    std::vector<float> samples(bytes.size() / sizeof(float));
    std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(float));
    return samples;
}

} // namespace

PulseServer::PulseServer(const std::string &folder) : socket(folder + "/socket") {
    setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
    server = begin({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                    "--load=module-native-protocol-unix auth-anonymous=1 socket=" + socket,
                    "--load=module-null-sink sink_name=nullout norewinds=1"},
                   folder);
}

PulseServer::~PulseServer() {
    end_at(server, SIGTERM);
    unsetenv("PULSE_SERVER");
}

bool PulseServer::ready() const {
    return wait_until(patience, [] {
        return output_of("pactl info 2>/dev/null").find("Default Sink: nullout") !=
               std::string::npos;
    });
}

void PulseServer::crash() {
    end_at(server, SIGKILL);
}

JackServer::JackServer(int frames) {
    // One name for all: the system keeps eight, and frees that of a killed server for itself alone.
    const std::string name = "quillgrove_tests";
    setenv("JACK_DEFAULT_SERVER", name.c_str(), 1);
    setenv("JACK_NO_AUDIO_RESERVATION", "1", 1);
    // It waits for its programs: on a busy machine none misses a block and the messages in it.
    server = begin({"jackd", "--no-realtime", "--sync", "-n", name, "-d", "dummy", "-r", "48000",
                    "-p", std::to_string(frames)},
                   "");
}

JackServer::~JackServer() {
    end_at(server, SIGTERM);
    unsetenv("JACK_DEFAULT_SERVER");
}

bool JackServer::ready() const {
    return wait_until(patience, [] {
        return output_of("jack_lsp 2>/dev/null").find("system:playback_2") != std::string::npos;
    });
}

void JackServer::crash() {
    end_at(server, SIGKILL);
}

bool JackServer::connected() const {
    return wait_until(patience, [] {
        const std::string ports = output_of("jack_lsp -c 2>/dev/null");
        return ports.find("outport 1\n") != std::string::npos &&
               ports.find("   Quillgrove:outport 0") != std::string::npos;
    });
}

JackHand::JackHand(const std::string &folder) : file(folder + "/heard.raw") {
    int commands[2], answers[2];
    if (pipe2(commands, O_CLOEXEC) != 0 || pipe2(answers, O_CLOEXEC) != 0) {
        return;
    }
    const pid_t parent = getpid();
    process = fork();
    if (process == 0) {
        die_with_parent(parent, SIGKILL);
        dup2(commands[0], STDIN_FILENO);
        dup2(answers[1], STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
        execute({JACK_HAND});
    }
    close(commands[0]);
    close(answers[1]);
    to = fdopen(commands[1], "w");
    from = fdopen(answers[0], "r");
    working = obeys("");
}

JackHand::~JackHand() {
    end_at(process, SIGTERM);
    for (FILE *end : {to, from}) {
        if (end != nullptr) {
            fclose(end);
        }
    }
}

/// The first answer comes unasked.
bool JackHand::obeys(const std::string &command) {
    if (to == nullptr || from == nullptr) {
        return false;
    }
    if (!command.empty()) {
        fprintf(to, "%s\n", command.c_str());
        fflush(to);
    }
    char answer[32] = "";
    return fgets(answer, sizeof answer, from) != nullptr && std::strcmp(answer, "ok\n") == 0;
}

bool JackHand::send(int keyboard, int status, int data1, int data2) {
    return obeys("midi " + std::to_string(keyboard) + " " + std::to_string(status) + " " +
                 std::to_string(data1) + " " + std::to_string(data2));
}

bool JackHand::listen(const std::string &output) {
    return obeys("listen " + output);
}

std::vector<float> JackHand::record(Duration time) {
    if (!obeys("record " + file)) {
        return {};
    }
    pause_for(time);
    return obeys("stop") ? floats_of(content_of(file)) : std::vector<float>();
}

Recording::Recording(const std::string &folder) : file(folder + "/recording.raw") {
    recorder = begin({"parec", "-d", "nullout.monitor", "--format=float32le", "--rate=44100",
                      "--channels=1", "--latency-msec=20", "--raw", file},
                     folder);
    wait_until(patience, [this] { return content_of(file).size() > 4096; });
}

Recording::~Recording() {
    end_at(recorder, SIGKILL);
}

std::vector<float> Recording::finish() {
    pause_for(tail);
    end_at(recorder, SIGINT);
    return floats_of(content_of(file));
}

double measured(const std::vector<float> &samples, const std::string &what,
                const std::string &folder, int rate) {
    const std::string raw = folder + "/measured.raw";
    std::ofstream(raw, std::ios::binary)
        .write(reinterpret_cast<const char *>(samples.data()),
               static_cast<std::streamsize>(samples.size() * sizeof(float)));
    const std::string said = output_of("sox -t raw -e floating-point -b 32 -c 1 -r " +
                                       std::to_string(rate) + " '" + raw + "' -n stat 2>&1");
    const size_t at = said.find(what + ":");
    return at != std::string::npos ? std::atof(said.c_str() + at + what.size() + 1) : -1.0;
}
