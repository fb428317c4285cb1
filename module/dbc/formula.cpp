#include "formula.h"

#include "linereader.h"

#include <cctype>
#include <charconv>
#include <cmath>

namespace module {

/** Turns a text into a program by recursive descent: a sum of products of factors. */
class FormulaCompiler
{
public:
    FormulaCompiler(const QByteArray &text, QString *error)
        : m_at(text.constData()), m_begin(m_at), m_end(m_at + text.size()), m_error(error)
    {
    }

    bool compile(Formula *formula)
    {
        m_program = &formula->m_program;
        return sum() && (isAtEnd() || fail(QStringLiteral("an operation or the end")));
    }

private:
    using Operation = Formula::Operation;

    bool sum();
    bool product();
    bool factor();
    bool parenthesized();
    bool number();
    bool name();
    bool isAtEnd();
    bool skipIf(char c);
    bool add(Operation operation, double value = 0);
    bool fail(const QString &expected);

    const char *m_at;
    const char *m_begin;
    const char *m_end;
    QString *m_error;
    QVector<Formula::Instruction> *m_program = nullptr;
    int m_depth = 0;
};

bool FormulaCompiler::isAtEnd()
{
    while (m_at != m_end && (*m_at == ' ' || *m_at == '\t'))
        ++m_at;
    return m_at == m_end;
}

bool FormulaCompiler::skipIf(char c)
{
    if (isAtEnd() || *m_at != c)
        return false;
    ++m_at;
    return true;
}

bool FormulaCompiler::add(Operation operation, double value)
{
    m_program->append({operation, value});
    return true;
}

bool FormulaCompiler::fail(const QString &expected)
{
    const QString found = isAtEnd()
                              ? QStringLiteral("the end")
                              : QStringLiteral("'%1'").arg(excerpt({m_at, int(m_end - m_at)}));
    *m_error = QStringLiteral("column %1: expected %2, found %3")
                   .arg(m_at - m_begin + 1)
                   .arg(expected, found);
    return false;
}

bool FormulaCompiler::sum()
{
    if (!product())
        return false;
    while (!isAtEnd() && (*m_at == '+' || *m_at == '-')) {
        const Operation operation = *m_at++ == '+' ? Operation::Add : Operation::Subtract;
        if (!product() || !add(operation))
            return false;
    }
    return true;
}

bool FormulaCompiler::product()
{
    if (!factor())
        return false;
    while (!isAtEnd() && (*m_at == '*' || *m_at == '/')) {
        const Operation operation = *m_at++ == '*' ? Operation::Multiply : Operation::Divide;
        if (!factor() || !add(operation))
            return false;
    }
    return true;
}

bool FormulaCompiler::factor()
{
    if (m_depth == Formula::DeepestNesting)
        return fail(QStringLiteral("at most %1 levels").arg(Formula::DeepestNesting));
    ++m_depth;
    bool isSound = false;
    if (skipIf('-'))
        isSound = factor() && add(Operation::Negate);
    else if (skipIf('('))
        isSound = parenthesized();
    else if (!isAtEnd() && (std::isdigit(uchar(*m_at)) || *m_at == '.'))
        isSound = number();
    else
        isSound = name();
    --m_depth;
    return isSound;
}

bool FormulaCompiler::parenthesized()
{
    return sum() && (skipIf(')') || fail(QStringLiteral("')'")));
}

bool FormulaCompiler::number()
{
    double value = 0;
    const auto result = std::from_chars(m_at, m_end, value);
    if (result.ec != std::errc())
        return fail(QStringLiteral("a number"));
    m_at = result.ptr;
    return add(Operation::Number, value);
}

/** A formula knows the value of its own signal only, which rules out circles. */
bool FormulaCompiler::name()
{
    static constexpr struct
    {
        const char *name;
        Operation operation;
    } functions[] = {{"floor", Operation::Floor},
                     {"ceil", Operation::Ceil},
                     {"round", Operation::Round},
                     {"abs", Operation::Abs}};
    const char *const start = m_at;
    const char *end = start;
    while (end != m_end && (std::isalnum(uchar(*end)) || *end == '_' || *end == '.'))
        ++end;
    const QByteArray name(start, int(end - start));
    if (name == "x") {
        m_at = end;
        return add(Operation::X);
    }
    for (const auto &function : functions) {
        if (name != function.name)
            continue;
        m_at = end;
        return (skipIf('(') || fail(QStringLiteral("'('"))) && parenthesized() &&
               add(function.operation);
    }
    return fail(QStringLiteral("a number, x, '(', floor, ceil, round or abs"));
}

std::optional<Formula> Formula::compile(const QString &text, QString *error)
{
    if (text.size() > LongestText) {
        *error = QStringLiteral("expected at most %1 characters, found %2")
                     .arg(LongestText)
                     .arg(text.size());
        return std::nullopt;
    }
    const QByteArray bytes = text.toLatin1();
    Formula formula;
    return FormulaCompiler(bytes, error).compile(&formula) ? std::optional<Formula>(formula)
                                                           : std::nullopt;
}

// ---- Evaluating ---------------------------------------------------------------------------------

static double ofOne(Formula::Operation operation, double value)
{
    switch (operation) {
    case Formula::Operation::Negate:
        return -value;
    case Formula::Operation::Floor:
        return std::floor(value);
    case Formula::Operation::Ceil:
        return std::ceil(value);
    case Formula::Operation::Round:
        return std::nearbyint(value);
    default:
        return std::abs(value);
    }
}

static double ofTwo(Formula::Operation operation, double left, double right)
{
    switch (operation) {
    case Formula::Operation::Add:
        return left + right;
    case Formula::Operation::Subtract:
        return left - right;
    case Formula::Operation::Multiply:
        return left * right;
    default:
        return right == 0 ? qQNaN() : left / right;
    }
}

std::optional<double> Formula::evaluate(double x) const
{
    // A sum and a product wait for their right sides at each level, at most.
    double stack[2 * DeepestNesting + 3];
    int size = 0;
    for (const Instruction &instruction : m_program) {
        if (instruction.operation <= Operation::X) {
            stack[size++] = instruction.operation == Operation::X ? x : instruction.number;
        } else if (instruction.operation >= Operation::Negate) {
            stack[size - 1] = ofOne(instruction.operation, stack[size - 1]);
        } else {
            --size;
            stack[size - 1] = ofTwo(instruction.operation, stack[size - 1], stack[size]);
        }
    }
    return std::isfinite(stack[0]) ? std::optional<double>(stack[0]) : std::nullopt;
}

} // namespace module
