#include "host/VexVarList.h"

#include "host/VexContVar.h"

#include <stdexcept>
#include <utility>

namespace VexXML_920 {

namespace {

class LabelTable final : public VexValueLabels {
public:
    explicit LabelTable(std::map<int, std::string> labels) : labels_(std::move(labels)) {}

    [[nodiscard]] std::string GetLabel(int value) const override
    {
        const auto found = labels_.find(value);
        return found != labels_.end() ? found->second : std::to_string(value);
    }
    [[nodiscard]] bool isEmpty() const noexcept { return labels_.empty(); }

private:
    std::map<int, std::string> labels_;
};

/// A variable with whole-number values, which may have labels.
class CategoricalVariable final : public IVexVariable {
public:
    CategoricalVariable(std::string name, int valueType, std::map<int, std::string> labels)
        : name_(std::move(name)), valueType_(valueType), labels_(std::move(labels))
    {
    }

    [[nodiscard]] int GetVarType() const override { return categorical; }
    [[nodiscard]] std::string GetName() const override { return name_; }
    [[nodiscard]] int GetValueType() const override { return valueType_; }
    [[nodiscard]] const VexValueLabels* GetValueLabels() const override
    {
        return labels_.isEmpty() ? nullptr : &labels_;
    }

private:
    std::string name_;
    int valueType_;
    LabelTable labels_;
};

} // namespace

int VexVarList::AddContinuous(std::string name) { return Add(std::make_unique<VexContVar>(std::move(name))); }

int VexVarList::AddContinuous(std::string name, double min, double max)
{
    return Add(std::make_unique<VexContVar>(std::move(name), min, max));
}

int VexVarList::AddTwoValued(std::string name, std::map<int, std::string> labels)
{
    return Add(std::make_unique<CategoricalVariable>(std::move(name), IVexVariable::twoValued, std::move(labels)));
}

int VexVarList::AddCategorical(std::string name, std::map<int, std::string> labels)
{
    return Add(std::make_unique<CategoricalVariable>(std::move(name), IVexVariable::labelledValues, std::move(labels)));
}

int VexVarList::Add(std::unique_ptr<IVexVariable> variable)
{
    if (!variable)
        throw std::invalid_argument("VexVarList: the variable to add is null");
    variables_.push_back(std::move(variable));
    return GetCount() - 1;
}

IVexVariable* VexVarList::GetVarAt(int index) const
{
    if (index < 0 || index >= GetCount())
        throw std::out_of_range("VexVarList: index " + std::to_string(index) + " is outside a list of "
                                + std::to_string(GetCount()) + " variables");
    return variables_[static_cast<std::size_t>(index)].get();
}

} // namespace VexXML_920
