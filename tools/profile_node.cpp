#include "profile_node.h"

#include <algorithm>
#include <stdexcept>

namespace {

// "the string "twelve"", "an array"
std::string describe(const toml::node &node)
{
    if (const auto *const string = node.as_string()) return "the string \"" + string->get() + '"';
    if (const auto *const integer = node.as_integer()) return std::to_string(integer->get());
    if (const auto *const boolean = node.as_boolean()) return boolean->get() ? "true" : "false";
    if (node.is_table()) return "a table";
    if (node.is_array()) return "an array";
    return node.is_floating_point() ? "a floating-point number" : "a date or a time";
}

}  // namespace

void Faults::add(const toml::source_position &at, const std::string &problem)
{
    faults_.push_back({at, problem});
}

void Faults::throw_if_any()
{
    if (faults_.empty()) return;
    std::stable_sort(faults_.begin(), faults_.end(),
                     [](const Fault &one, const Fault &other) { return one.at < other.at; });
    std::string message;
    for (const auto &[at, problem] : faults_) {
        if (!message.empty()) message += '\n';
        message += path_ + ':' + std::to_string(at.line) + ':' + std::to_string(at.column) + ": ";
        message += problem;
    }
    throw std::runtime_error(message);
}

void Node::read_truth(uint8_t &value) const
{
    const auto *const boolean = node_->as_boolean();
    if (boolean == nullptr) return expected("true or false");
    value = boolean->get() ? 1 : 0;
}

std::vector<Node> Node::members(size_t most, const std::string &what) const
{
    std::vector<Node> nodes;
    const toml::array *const array = node_->as_array();
    if (array == nullptr) {
        expected(what);
    } else if (array->size() > most) {
        wrong("expected " + what + ", found " + std::to_string(array->size()));
    } else {
        for (const toml::node &member : *array) nodes.emplace_back(*faults_, key_, member);
    }
    return nodes;
}

std::vector<Node> Node::entries() const
{
    std::vector<Node> nodes;
    const toml::table *const table = node_->as_table();
    if (table == nullptr) {
        expected("a table");
        return nodes;
    }
    for (const auto &[key, value] : *table)
        nodes.emplace_back(*faults_, std::string(key.str()), value, key.source().begin);
    return nodes;
}

void Node::expected(const std::string &what, const std::string &hint) const
{
    wrong("expected " + what + ", found " + describe(*node_) + hint);
}

void Node::wrong(const std::string &problem) const
{
    faults_->add(node_->source().begin, key_ + ": " + problem);
}

void Node::expected_key(const std::string &what, const std::string &hint) const
{
    faults_->add(place_, "expected " + what + ", found the key \"" + key_ + '"' + hint);
}
