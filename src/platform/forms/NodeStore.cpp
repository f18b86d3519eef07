#include "platform/forms/NodeStore.h"

#include <algorithm>

namespace quarv::forms {

namespace {

// Nodes are made in pieces: few trips to the heap, and neighbours in the tree lie side by side.
constexpr int PieceSize = 128;

std::size_t PieceOf(int number) {
    return static_cast<std::size_t>(number / PieceSize);
}

std::size_t WithinPiece(int number) {
    return static_cast<std::size_t>(number % PieceSize);
}

}  // namespace

NodeStore::NodeStore(NodeModel& model) : model_(model) {}

NodeStore::~NodeStore() = default;

Node& NodeStore::At(int number) {
    Node& node = Place(number);
    if (node.model_ == nullptr) Make(node, number);
    return node;
}

Node* NodeStore::ParentAt(int number) const {
    const Node* made = MadeAt(number);
    return made != nullptr ? made->parent_ : RecipeOf(number).batch.parent;
}

QString NodeStore::KeyAt(int number) const {
    if (const Node* made = MadeAt(number)) return made->key_;
    const Recipe& recipe = RecipeOf(number);
    return recipe.batch.keyPrefix +
           recipe.batch.texts[static_cast<std::size_t>(number - recipe.first)];
}

Node* NodeStore::MadeAt(int number) const {
    const std::size_t piece = PieceOf(number);
    if (piece >= pieces_.size() || pieces_[piece] == nullptr) return nullptr;
    Node& node = pieces_[piece][WithinPiece(number)];
    return node.model_ == nullptr ? nullptr : &node;
}

Node& NodeStore::Append() {
    Node& node = Place(count_++);
    node.model_ = &model_;
    node.index_ = count_;
    return node;
}

const NodeBatch& NodeStore::Append(NodeBatch batch) {
    recipes_.push_back({count_, std::move(batch)});
    count_ += static_cast<int>(recipes_.back().batch.texts.size());
    return recipes_.back().batch;
}

void NodeStore::Truncate(int count) {
    count_ = count;
    while (!recipes_.empty() && recipes_.back().first >= count) recipes_.pop_back();
    if (recipes_.empty()) return;
    std::vector<QString>& texts = recipes_.back().batch.texts;
    const auto left = static_cast<std::size_t>(count - recipes_.back().first);
    if (left < texts.size()) texts.resize(left);
}

void NodeStore::Clear() {
    pieces_.clear();
    recipes_.clear();
    count_ = 0;
}

Node& NodeStore::Place(int number) {
    const std::size_t piece = PieceOf(number);
    if (piece >= pieces_.size()) pieces_.resize(piece + 1);
    if (pieces_[piece] == nullptr) pieces_[piece].reset(new Node[PieceSize]);
    return pieces_[piece][WithinPiece(number)];
}

const NodeStore::Recipe& NodeStore::RecipeOf(int number) const {
    const auto behind =
        std::upper_bound(recipes_.begin(), recipes_.end(), number,
                         [](int wanted, const Recipe& recipe) { return wanted < recipe.first; });
    return *(behind - 1);
}

void NodeStore::Make(Node& node, int number) {
    const Recipe& recipe = RecipeOf(number);
    const int offset = number - recipe.first;
    node.model_ = &model_;
    node.parent_ = recipe.batch.parent;
    node.text_ = recipe.batch.texts[static_cast<std::size_t>(offset)];
    node.key_ = recipe.batch.keyPrefix + node.text_;
    node.image_ = recipe.batch.image;
    node.index_ = number + 1;
    node.row_ = recipe.batch.firstRow + offset;
}

}  // namespace quarv::forms
