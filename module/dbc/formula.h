#pragma once

#include <QString>
#include <QVector>

#include <optional>

namespace module {

/**
 * A formula in x: numbers, the four operations, minus, parentheses, floor, ceil, round and abs.
 * round takes a half to the even number, as the formulas of such maps are evaluated elsewhere.
 */
class Formula
{
public:
    static constexpr int LongestText = 1000;
    static constexpr int DeepestNesting = 50;

    // What takes no number, two and one, in this order.
    enum class Operation : quint8 {
        Number,
        X,
        Add,
        Subtract,
        Multiply,
        Divide,
        Negate,
        Floor,
        Ceil,
        Round,
        Abs
    };

    /** @param error  what was expected, with the column from 1 */
    static std::optional<Formula> compile(const QString &text, QString *error);

    /** @return nothing where there is no finite value, for instance for a division by zero */
    std::optional<double> evaluate(double x) const;

private:
    friend class FormulaCompiler;

    struct Instruction
    {
        Operation operation;
        double number;
    };

    QVector<Instruction> m_program; // for a stack of numbers
};

} // namespace module
