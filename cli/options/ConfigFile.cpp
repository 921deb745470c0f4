#include "cli/options/ConfigFile.h"

#include "cli/options/ConfigText.h"
#include "cli/options/Offer.h"
#include "cli/words/Failure.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <sstream>

namespace vexroc {

namespace {

using Items = std::vector<CLI::ConfigItem>;
using Names = std::vector<std::string>;

bool contains(const Names& names, const std::string& name) { return std::ranges::find(names, name) != names.end(); }

/// Where the data are is one answer, though several options give it: what goes first replaces all of it.
void dropReplaced(Items& items, const Names& given)
{
    static const struct {
        Names given; ///< any of them
        Names replaced;
    } replacements[] = {
        {{"FILE", "sqlite", "postgres"}, {"FILE", "sqlite", "postgres", "table", "query"}},
        {{"sqlite", "postgres"}, {"delimiter", "decimal"}},
        {{"table", "query"}, {"table", "query"}},
    };
    const auto isGiven = [&](const std::string& name) { return contains(given, name); };
    for (const auto& each : replacements)
        if (std::ranges::any_of(each.given, isGiven))
            std::erase_if(items, [&](const CLI::ConfigItem& item) { return contains(each.replaced, item.name); });
}

/// Sorts what a file says by whom it is for: the command that was called, or the program.
class Reading {
public:
    explicit Reading(const CLI::App& program) : program_(program), commands_(commandNames(program))
    {
        const std::vector<CLI::App*> called = program.get_subcommands();
        command_ = called.empty() ? nullptr : called.front();
    }

    void add(CLI::ConfigItem item)
    {
        const bool isSectionMark = item.name == "++" || item.name == "--";
        const std::string section = CLI::detail::join(item.parents, ".");
        if (!section.empty() && !contains(commands_, section))
            throw usageError("no command " + inQuotes(section) + didYouMean(section, commands_));
        if (isSectionMark)
            return;
        requireKnown(item);
        Items& items = item.parents.empty() ? common_ : specific_;
        const auto same = [&](const CLI::ConfigItem& other) { return other.fullname() == item.fullname(); };
        if (std::ranges::any_of(items, same))
            throw usageError(inQuotes(item.fullname()) + " is given twice");
        items.push_back(std::move(item));
    }

    /// The first to name an option sets it.
    Items take()
    {
        Names given;
        for (const CLI::Option* const option : command_ == nullptr ? Options{} : command_->get_options())
            if (option->count() > 0)
                given.push_back(nameOf(*option));
        dropReplaced(specific_, given);
        std::erase_if(specific_, [this](const CLI::ConfigItem& item) { return item.parents.front() != called(); });
        for (const CLI::ConfigItem& item : specific_)
            given.push_back(item.name);
        dropReplaced(common_, given);
        for (CLI::ConfigItem& item : common_)
            if (takeForProgramOrCommand(item))
                specific_.push_back(std::move(item));
        return std::move(specific_);
    }

private:
    using Options = std::vector<const CLI::Option*>;

    [[nodiscard]] std::string called() const { return command_ == nullptr ? "" : command_->get_name(); }

    /// An option of the program, or of some commands: then it is for the one that is called, if that has it.
    bool takeForProgramOrCommand(CLI::ConfigItem& item) const
    {
        if (contains(optionNames(program_), item.name))
            return true;
        item.parents = {called()};
        return command_ != nullptr && contains(optionNames(*command_), item.name);
    }

    void requireKnown(const CLI::ConfigItem& item) const
    {
        Names known;
        if (item.parents.empty())
            known = optionNames(program_);
        for (const std::string& command : item.parents.empty() ? commands_ : item.parents)
            for (std::string& name : optionNames(*program_.get_subcommand(command)))
                known.push_back(std::move(name));
        const std::string owner = item.parents.empty() ? "" : item.parents.front() + " has ";
        if (!contains(known, item.name))
            throw usageError(owner + "no option " + inQuotes(item.name) + didYouMean(item.name, known));
        if (contains({"config", "help", "version"}, item.name))
            throw usageError(inQuotes(item.name) + " is not allowed in a file; it is for the command line");
    }

    const CLI::App& program_;
    Names commands_;
    const CLI::App* command_;
    Items specific_; ///< of sections
    Items common_;
};

} // namespace

Items ConfigFile::from_config(std::istream& input) const
{
    try {
        std::istringstream text(readableConfig(input));
        Reading reading(program_);
        for (CLI::ConfigItem& item : ConfigBase::from_config(text))
            reading.add(std::move(item));
        return reading.take();
    } catch (const Failure& failure) {
        const auto path = program_.get_option("--config")->as<std::string>();
        throw usageError("--config " + visible(path) + ": " + failure.what());
    }
}

} // namespace vexroc
