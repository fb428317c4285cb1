#include "adapter/atcommands.h"

#include "adapter/protocols.h"
#include "linereader.h"

#include <algorithm>
#include <iterator>

namespace ecu {

using module::isHex;
using module::Quantity;

/** What follows the name of a command. */
enum class Form : quint8 { Nothing, Flag, Timing, Byte, Protocol, Header, HeaderOrNothing };

struct Argument
{
    quint32 value = 0;
    QByteArray text;
};

static constexpr bool AdapterState::*noFlag = nullptr;

struct AtCommand
{
    const char *name;
    Form form;
    int since; // the version that brought it, times ten
    bool AdapterState::*flag;
    /** Null where its answer is OK whatever happens. */
    QByteArray (*answer)(const Argument &argument, const Car &car, AdapterState &state);
};

static const QByteArray ok = "OK";
static const QByteArray unknown = "?";

static QByteArray version(const Argument &, const Car &, AdapterState &state)
{
    return state.claimsTooMuch ? "ELM327 v2.1" : "ELM327 v1.5";
}

static QByteArray reset(const Argument &argument, const Car &car, AdapterState &state)
{
    state.reset();
    return version(argument, car, state);
}

static QByteArray setDefaults(const Argument &, const Car &, AdapterState &state)
{
    state.setDefaults();
    return ok;
}

static QByteArray description(const Argument &, const Car &, AdapterState &)
{
    return "OBDII to RS232 Interpreter";
}

static QByteArray setAdaptiveTiming(const Argument &argument, const Car &, AdapterState &state)
{
    state.adaptiveTiming = int(argument.value);
    return ok;
}

static QByteArray setTimeout(const Argument &argument, const Car &, AdapterState &state)
{
    state.timeout = argument.value ? int(argument.value) : AdapterState::UsualTimeout;
    return ok;
}

static QByteArray setProtocol(const Argument &argument, const Car &, AdapterState &state)
{
    state.protocol = argument.text.right(1).toInt(nullptr, 16);
    state.searches = argument.text.size() > 1 || state.protocol == 0;
    return ok;
}

static QByteArray closeProtocol(const Argument &, const Car &, AdapterState &state)
{
    if (state.searches)
        state.protocol = 0;
    return ok;
}

static QByteArray protocolName(const Argument &, const Car &, AdapterState &state)
{
    const QByteArray name = protocol(state.protocol)->name;
    return state.searches && state.protocol != 0 ? "AUTO, " + name : name;
}

static QByteArray protocolNumber(const Argument &, const Car &, AdapterState &state)
{
    const QByteArray digit = QByteArray::number(state.protocol, 16).toUpper();
    return state.searches ? 'A' + digit : digit;
}

static QByteArray voltage(const Argument &, const Car &car, AdapterState &)
{
    static constexpr double resting = 12.6; // where the drive does not say
    return QByteArray::number(car.values.valueOr(Quantity::Voltage, resting), 'f', 1) + 'V';
}

static QByteArray ignition(const Argument &, const Car &, AdapterState &)
{
    return "ON";
}

static QByteArray setHeader(const Argument &argument, const Car &, AdapterState &state)
{
    state.header = {argument.value, argument.text.size()};
    return ok;
}

static QByteArray setPriority(const Argument &argument, const Car &, AdapterState &state)
{
    state.priority = quint8(argument.value);
    return ok;
}

static QByteArray setFilter(const Argument &argument, const Car &, AdapterState &state)
{
    state.filter = argument.value;
    return ok;
}

static QByteArray setMask(const Argument &argument, const Car &, AdapterState &state)
{
    state.mask = argument.value;
    return ok;
}

/** All answers, or those of one identifier. */
static QByteArray setReceiveAddress(const Argument &argument, const Car &, AdapterState &state)
{
    state.mask = AdapterState().mask;
    state.filter = argument.text.isEmpty() ? std::nullopt : std::optional(argument.value);
    return ok;
}

// clang-format off
static const AtCommand commands[] = {
    {"Z",   Form::Nothing,  10, noFlag, reset},
    {"WS",  Form::Nothing,  10, noFlag, reset},
    {"D",   Form::Nothing,  10, noFlag, setDefaults},
    {"I",   Form::Nothing,  10, noFlag, version},
    {"@1",  Form::Nothing,  10, noFlag, description},
    {"E",   Form::Flag,     10, &AdapterState::echoes, nullptr},
    {"L",   Form::Flag,     10, &AdapterState::sendsLineFeeds, nullptr},
    {"S",   Form::Flag,     13, &AdapterState::spacesBytes, nullptr},
    {"H",   Form::Flag,     10, &AdapterState::showsHeaders, nullptr},
    {"D",   Form::Flag,     13, &AdapterState::showsLength, nullptr},
    {"R",   Form::Flag,     10, &AdapterState::awaitsAnswers, nullptr},
    {"CAF", Form::Flag,     10, &AdapterState::formatsData, nullptr},
    {"CFC", Form::Flag,     10, &AdapterState::controlsFlow, nullptr},
    {"AT",  Form::Timing,   12, noFlag, setAdaptiveTiming},
    {"ST",  Form::Byte,     10, noFlag, setTimeout},
    {"SP",  Form::Protocol, 10, noFlag, setProtocol},
    {"TP",  Form::Protocol, 10, noFlag, setProtocol},
    {"DP",  Form::Nothing,  10, noFlag, protocolName},
    {"DPN", Form::Nothing,  10, noFlag, protocolNumber},
    {"PC",  Form::Nothing,  10, noFlag, closeProtocol},
    {"RV",  Form::Nothing,  10, noFlag, voltage},
    {"IGN", Form::Nothing,  14, noFlag, ignition},
    {"SH",  Form::Header,   10, noFlag, setHeader},
    {"CP",  Form::Byte,     10, noFlag, setPriority},
    {"CF",  Form::Header,   10, noFlag, setFilter},
    {"CM",  Form::Header,   10, noFlag, setMask},
    {"CRA", Form::HeaderOrNothing, 13, noFlag, setReceiveAddress},
    {"AR",  Form::Nothing,  12, noFlag, setReceiveAddress},
    // Nothing of this makes a difference on this bus.
    {"AL",  Form::Nothing,  10, noFlag, nullptr},
    {"NL",  Form::Nothing,  10, noFlag, nullptr},
    {"BI",  Form::Nothing,  10, noFlag, nullptr},
    {"M",   Form::Flag,     10, noFlag, nullptr},
    {"LP",  Form::Nothing,  14, noFlag, nullptr},
    {"KW",  Form::Flag,     13, noFlag, nullptr},
    {"V",   Form::Flag,     13, noFlag, nullptr},
    {"SS",  Form::Nothing,  14, noFlag, nullptr},
};
// clang-format on

static bool isHeader(const QByteArray &text)
{
    return isHex(text) && (text.size() == 3 || text.size() == 6 || text.size() == 8);
}

/** One digit, or with an A or a 0 before it the one to begin with. */
static bool isProtocol(const QByteArray &text)
{
    const bool isForm = text.size() == 1 || (text.size() == 2 && (text[0] == 'A' || text == "00"));
    return isForm && isHex(text) && protocol(text.right(1).toInt(nullptr, 16));
}

static bool hasForm(Form form, const QByteArray &text)
{
    switch (form) {
    case Form::Nothing:
        return text.isEmpty();
    case Form::Flag:
        return text == "0" || text == "1";
    case Form::Timing:
        return text == "0" || text == "1" || text == "2";
    case Form::Byte:
        return text.size() == 2 && isHex(text);
    case Form::Protocol:
        return isProtocol(text);
    case Form::Header:
        return isHeader(text);
    case Form::HeaderOrNothing:
        return text.isEmpty() || isHeader(text);
    }
    return false;
}

QByteArray carryOut(const QByteArray &command, const Car &car, AdapterState *state)
{
    static constexpr int oldest = 12; // what a copy that claims too much is made after
    const auto fits = [&command](const AtCommand &row) {
        return command.startsWith(row.name) &&
               hasForm(row.form, command.mid(int(qstrlen(row.name))));
    };
    const auto *const row = std::find_if(std::begin(commands), std::end(commands), fits);
    if (row == std::end(commands) || (state->claimsTooMuch && row->since > oldest))
        return unknown;
    const QByteArray text = command.mid(int(qstrlen(row->name)));
    const Argument argument = {text.toUInt(nullptr, 16), text};
    if (row->flag)
        state->*row->flag = argument.value != 0;
    return row->answer ? row->answer(argument, car, *state) : ok;
}

} // namespace ecu
