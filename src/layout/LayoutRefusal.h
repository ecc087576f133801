#pragma once

#include <QObject>
#include <QString>
#include <utility>
#include <variant>

// Why the layout turned an operation down. One reason per refusal, one text
// per reason: the log, the command line and the overlay all word it the same.
namespace LayoutRefusals {
Q_NAMESPACE

enum class LayoutRefusal {
    EmptyKey,       // the empty key names nothing
    MalformedKey,   // "A:" or "F:" with nothing after it
    WidgetKey,      // widget cells move with their widget, not as icons
    AlreadyOnGrid,  // the key already stands in a cell
    NotOnGrid,      // no cell holds the key
    InFolder,       // the app is a folder member, so it stays off the grid
    Hidden,         // the app is hidden, so it stays off the grid
    AlreadyHidden,
    NotHidden,
    UnknownApp,     // no installed application has the path
    UnknownFolder,
    UnknownWorkflow,
    UnknownWidget,
    NotInFolder,    // the folder has no such member
    NoMembers,      // a folder needs an app or a system folder
    InvalidName,    // names must not be blank
    WidgetArea,     // the target cell belongs to a widget
    Full,           // no page of the grid can hold the widget
};
Q_ENUM_NS(LayoutRefusal)

// The reason as a short clause ("it is hidden"), to follow a colon.
QString describe(LayoutRefusal refusal);

}

using LayoutRefusals::LayoutRefusal;
using LayoutRefusals::describe;

// The outcome of a layout operation that may be refused: a value, or why
// not, in the manner of std::expected (C++23). The void form converts to
// bool implicitly, so call sites that only ask "did it work?" read as they
// did when the operations returned bool; the valued form converts only
// explicitly, so its value is never mistaken for a bool.
template <typename T>
class LayoutResult {
public:
    LayoutResult(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    LayoutResult(LayoutRefusal refusal) : m_state(std::in_place_index<1>, refusal) {}

    bool has_value() const { return m_state.index() == 0; }
    explicit operator bool() const { return has_value(); }
    const T &value() const { return std::get<0>(m_state); }
    T &value() { return std::get<0>(m_state); }
    const T &operator*() const { return value(); }
    T &operator*() { return value(); }
    const T *operator->() const { return &value(); }
    T *operator->() { return &value(); }
    T value_or(T fallback) const { return has_value() ? value() : std::move(fallback); }
    // Only meaningful when has_value() is false.
    LayoutRefusal error() const { return std::get<1>(m_state); }

private:
    std::variant<T, LayoutRefusal> m_state;
};

template <>
class LayoutResult<void> {
public:
    LayoutResult() = default;
    LayoutResult(LayoutRefusal refusal) : m_refusal(refusal), m_refused(true) {}

    bool has_value() const { return !m_refused; }
    operator bool() const { return has_value(); }
    LayoutRefusal error() const { return m_refusal; }

private:
    LayoutRefusal m_refusal = LayoutRefusal::EmptyKey;
    bool m_refused = false;
};
