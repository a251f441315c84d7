// tests/support/console.h -- standard input and output of a piece of code under test, as text.
#pragma once

#include <functional>
#include <string>

/// What `work` prints on standard output.
std::string printed(const std::function<void()> &work);

/// What `work` prints while standard input holds `input` and then ends.
std::string conversation(const std::string &input, const std::function<void()> &work);

/// What `work` prints on standard error.
std::string complained(const std::function<void()> &work);
