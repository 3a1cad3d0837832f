#pragma once

#include <sstream>
#include <string>

namespace validate {

// The parts as one text.
template <class... Parts>
std::string text(const Parts&... parts) {
    std::ostringstream out;
    (out << ... << parts);
    return out.str();
}

// Thrown to end a check whose report says all there is to say.
struct EndOfCheck {};

// What a check has to say, written to the runner's pipe as it comes up, so that a check that dies
// has told how far it came. Owner: the check's process; one thread.
class Report {
  public:
    explicit Report(int pipe) : pipe_(pipe) {}
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    // Where the check stands from now on; stands before findings, and is what is known of a crash.
    void at(std::string place);
    // Something is wrong. Many findings end the check.
    void finding(const std::string& what);
    // As above, and nothing more can be said.
    [[noreturn]] void stop(const std::string& what);
    // A figure worth knowing, for the one line of a check that passed.
    void note(const std::string& what);

    void expect(bool holds, const std::string& otherwise) {
        if (!holds) finding(otherwise);
    }
    // Nothing when the text is empty.
    void expectNone(const std::string& fault) { expect(fault.empty(), fault); }
    template <class T>
    void expectSame(const T& is, const T& wanted, const char* what) {
        if (is != wanted) finding(text(what, " is ", is, " and should be ", wanted));
    }

    // The check came to its end.
    void done();

  private:
    void write(char kind, const std::string& what);

    int pipe_;
    int findings_ = 0;
    std::string place_;
};

// The kinds of lines in the pipe: one letter, the text, a line feed.
inline constexpr char kPlaceLine = 'A';
inline constexpr char kFindingLine = 'F';
inline constexpr char kNoteLine = 'N';
inline constexpr char kDoneLine = 'D';

}  // namespace validate
