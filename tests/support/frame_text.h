// tests/support/frame_text.h -- texts of the formats that hold frames, put together for tests.
#pragma once

#include <string>
#include <vector>

/// A SPEAR text of partials; `body` is all behind the head.
inline std::string spear_text(const std::string &count, const std::string &body) {
    return "par-text-partials-format\npoint-type time frequency amplitude\npartials-count " +
           count + "\npartials-data\n" + body;
}

/// A SPEAR text of frames.
inline std::string spear_frames_text(const std::string &count, const std::string &frames,
                                     const std::string &body) {
    return "par-text-frame-format\npoint-type index frequency amplitude\npartials-count " + count +
           "\nframe-count " + frames + "\nframe-data\n" + body;
}

/// A frame of SDIF text with one matrix; `rows` are lines of words.
inline std::string sdif_frame(const std::string &signature, const std::string &time,
                              const std::vector<std::string> &rows, int columns = 4,
                              const std::string &type = "0x0004") {
    std::string text = "\n" + signature + "\t1\t0\t" + time + "\n  " + signature + "\t" + type +
                       "\t" + std::to_string(rows.size()) + "\t" + std::to_string(columns) + "\n";
    for (const std::string &row : rows) {
        text += "\t" + row + "\n";
    }
    return text;
}

/// A whole SDIF text of tracks: header, a first frame of no rows that gives no point, and `body`.
inline std::string tracks_text(const std::string &signature, const std::string &body) {
    const std::string table = signature == "1HRM" ? "HarmonicTracks;" : "SinusoidalTracks;";
    return "SDIF\n\n1NVT\n{\nTableName\t" + table + "\n}\n\nSDFC\n" +
           sdif_frame(signature, "0", {}) + body + "\nENDC\nENDF\n";
}

/// A whole SDIF text of a fundamental: a first frame that gives no point, and `body`.
inline std::string curve_text(const std::string &body) {
    return "SDIF\n\nSDFC\n" + sdif_frame("1FQ0", "0", {"100 1"}, 2) + body + "\nENDC\nENDF\n";
}
