// live/shared.h -- plain fields that an audio or MIDI thread touches too, read and written as
// atomics, relaxed where a stale value is tolerated; a torn one never happens.
#pragma once

#include <atomic>

/// The present value of a field that another thread may be writing.
template <typename T> inline T peek(const T &field) {
    return std::atomic_ref<T>(const_cast<T &>(field)).load(std::memory_order_relaxed);
}

/// Stores into a field that another thread may be reading.
template <typename T> inline void poke(T &field, T value) {
    std::atomic_ref<T>(field).store(value, std::memory_order_relaxed);
}

/// Replaces `expected` by `value` where the field still holds it. False, and the field left as
/// it is, when another thread has written it since.
template <typename T> inline bool exchange(T &field, T expected, T value) {
    return std::atomic_ref<T>(field).compare_exchange_strong(expected, value,
                                                             std::memory_order_relaxed);
}

/// Like poke and peek, but all threads see these in one order, and what was written before a
/// publish is there for who observes its value.
template <typename T> inline void publish(T &field, T value) {
    std::atomic_ref<T>(field).store(value);
}
template <typename T> inline T observe(const T &field) {
    return std::atomic_ref<T>(const_cast<T &>(field)).load();
}
