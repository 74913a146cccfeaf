#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tessara::idl {

/// A source that can't be understood: one sentence with file and line.
struct SourceError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The words of a source file, without comments and lines of the preprocessor. A word is a name, a number (with its
/// dots and dashes, so that an identifier such as 1C7ACE81-6445-... is one word), a string in its quotes, or one other
/// character.
class Tokens {
public:
    /// \param file its name, for the sentences of failures
    Tokens(std::string_view source, std::string file);

    bool AtEnd() const noexcept { return next_ == words_.size(); }

    /// The next word, or one further on; empty behind the end.
    std::string_view Peek(std::size_t ahead = 0) const noexcept;

    /// \throws SourceError behind the end
    std::string Take();

    /// Takes the next word where it is this one.
    bool TakeIf(std::string_view word);

    /// \throws SourceError where the next word is another one
    void Expect(std::string_view word);

    /// Takes a string and gives it without its quotes. \throws SourceError
    std::string TakeString();

    [[noreturn]] void Refuse(const std::string& why) const;

private:
    struct Word {
        std::string text;
        int line;
    };

    std::string file_;
    std::vector<Word> words_;
    std::size_t next_ = 0;
};

/// Reads a whole file. \throws SourceError
std::string ReadSource(const std::string& file);

}  // namespace tessara::idl
