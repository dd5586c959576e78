// A node of a profile's file: its values, with the place of each for messages.
#ifndef ORVEX_TOOLS_PROFILE_NODE_H
#define ORVEX_TOOLS_PROFILE_NODE_H

#include <toml++/toml.h>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "options.h"

// Everything that is wrong with a file.
class Faults {
   public:
    explicit Faults(std::string path) : path_(std::move(path)) {}

    void add(const toml::source_position &at, const std::string &problem);

    // Throws std::runtime_error with all faults, a line each, in the order of the file.
    void throw_if_any();

   private:
    struct Fault {
        toml::source_position at;
        std::string problem;
    };

    std::string path_;
    std::vector<Fault> faults_;
};

// A word that a key's value may be, and its meaning.
template <typename Value>
struct Choice {
    const char *word;
    Value value;
};

// Reading a wrong value adds a fault and leaves the target as it is.
class Node {
   public:
    Node(Faults &faults, std::string key, const toml::node &node,
         const toml::source_position &place = {})
        : faults_(&faults), key_(std::move(key)), node_(&node), place_(place)
    {
    }

    [[nodiscard]] const std::string &key() const { return key_; }
    [[nodiscard]] bool is_table() const { return node_->is_table(); }

    template <typename Integer>
    void read(Integer &value) const
    {
        using Limits = std::numeric_limits<Integer>;
        const auto *const integer = node_->as_integer();
        if (integer == nullptr || integer->get() < Limits::min() || integer->get() > Limits::max())
            return expected("an integer from " + std::to_string(Limits::min()) + " to " +
                            std::to_string(Limits::max()));
        value = static_cast<Integer>(integer->get());
    }

    void read_truth(uint8_t &value) const;

    template <typename Value, size_t count>
    void read_choice(Value &value, const Choice<Value> (&choices)[count]) const
    {
        const std::string word = node_->value_or(std::string());
        std::vector<std::string> words;
        std::string list;
        for (const Choice<Value> &choice : choices) {
            if (word == choice.word) {
                value = choice.value;
                return;
            }
            words.emplace_back(choice.word);
            list += (list.empty() ? "\"" : " or \"") + words.back() + '"';
        }
        expected(list, did_you_mean(word, words));
    }

    // The text, or an empty one when it is none.
    [[nodiscard]] std::string text() const { return node_->value_or(std::string()); }

    // The members of an array of at most `most`.
    [[nodiscard]] std::vector<Node> members(size_t most, const std::string &what) const;

    // The keys of a table, each with its value.
    [[nodiscard]] std::vector<Node> entries() const;

    void expected(const std::string &what, const std::string &hint = {}) const;
    void wrong(const std::string &problem) const;

    // The key itself is wrong.
    void expected_key(const std::string &what, const std::string &hint = {}) const;

   private:
    Faults *faults_;
    std::string key_;
    const toml::node *node_;
    toml::source_position place_;  // of the key
};

// How the value of each key is read.
template <typename Target>
struct Key {
    const char *name;
    void (*read)(Target &target, const Node &node);
};

template <typename Target, size_t count>
void read_table(Target &target, const Node &table, const Key<Target> (&keys)[count])
{
    for (const Node &entry : table.entries()) {
        std::vector<std::string> names;
        std::string list;
        const Key<Target> *match = nullptr;
        for (const Key<Target> &key : keys) {
            if (entry.key() == key.name) match = &key;
            names.emplace_back(key.name);
            list += (list.empty() ? "" : ", ") + names.back();
        }
        if (match != nullptr)
            match->read(target, entry);
        else
            entry.expected_key("one of " + list, did_you_mean(entry.key(), names));
    }
}

#endif
