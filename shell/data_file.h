#pragma once

#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::shell {

/// A file of the host that cannot be used at all; `what()` is Italian, for the user, and names file and
/// place.
class DataFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What is wrong with parts of a file, one Italian sentence each, naming file and place.
using Problems = std::vector<std::string>;

/// Tells the user about files that are not as they should be.
using ProblemReporter = std::function<void(const std::string& text)>;

/// All of `problems` as one text, one to a line.
std::string joinProblems(const Problems& problems);

/// \throws DataFileError when the file is missing, unreadable or not UTF-8.
std::string readTextFile(const std::filesystem::path& path);

/// "file «path», riga 3, colonna 14" for a 0-based byte position of `text`.
std::string placeInFile(const std::filesystem::path& path, std::string_view text, std::size_t position);

/// Whether what a file holds may be quoted when it is told what is wrong with it.
enum class Quotes { Shown, Withheld };

/// One JSON object of a file, read key by key. A value of the wrong type is a problem and counts as missing,
/// so that the rest of the file still serves.
class DataObject {
public:
    /// The file's top object. Comments are allowed. \throws DataFileError for a file that cannot be read or
    /// is not a JSON object, with line and column; a key written twice is a problem.
    static DataObject fromFile(const std::filesystem::path& path, Problems& problems,
                               Quotes quotes = Quotes::Shown);

    const std::filesystem::path& file() const { return file_; }
    std::vector<std::string> keys() const;

    std::optional<std::string> text(const std::string& key) const;
    std::optional<bool> boolean(const std::string& key) const;
    std::optional<int> integer(const std::string& key) const;
    std::optional<DataObject> object(const std::string& key) const;

    /// Every key that is not among `known` is a problem: a misspelt key must not pass in silence.
    void refuseKeysOtherThan(std::initializer_list<std::string_view> known) const;
    /// Notes a problem of this object's `key`.
    void problem(const std::string& key, const std::string& what) const;

private:
    DataObject(std::filesystem::path file, std::shared_ptr<const nlohmann::json> document,
               const nlohmann::json& object, std::string place, Problems& problems)
        : file_(std::move(file)), document_(std::move(document)), object_(&object), place_(std::move(place)),
          problems_(&problems) {}
    const nlohmann::json* find(const std::string& key) const;
    std::string placeOf(const std::string& key) const;

    std::filesystem::path file_;
    std::shared_ptr<const nlohmann::json> document_; // shared: nested objects are parts of one document
    const nlohmann::json* object_;
    std::string place_; ///< keys from the top, joined by "/"; empty at the top
    Problems* problems_;
};

} // namespace veldran::shell
