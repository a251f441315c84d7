// export/export_text.h -- text that an exporter builds in memory, byte for byte as printf would
// print it. Numbers of a single-precision value come without printf, which would take most of
// the time of an export.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class ExportText {
  public:
    /// Appends the text as it stands.
    void put(std::string_view part) {
        text.append(part);
    }

    /// Appends what printf would print.
    void print(const char *format, ...) __attribute__((format(printf, 2, 3)));

    /// Appends the number as printf's "%d" prints it.
    void whole(int32_t value);

    /// Appends `value` as printf's "%<width>.<decimals>f" prints it; `decimals` is 0 to 6.
    void fixed(float value, int width, int decimals);

    size_t size() const {
        return text.size();
    }

    /// What was appended from place `from` on.
    std::string_view since(size_t from) const {
        return std::string_view(text).substr(from);
    }

    void clear() {
        text.clear();
    }

  private:
    std::string text;
};
