// preset_json.h - a small JSON reader of the tests' own, to know without the plug-in's reader what
// a preset holds: the first key's value of every animation.
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

#include <cstring>

namespace quillon {

class PresetJson {
public:
    // Urls and first values, in the order of the file; empty with *ok off when it is no JSON.
    static QList<QPair<QByteArray, double>> animations(const QByteArray& text, bool* ok)
    {
        PresetJson json(text);
        json.value();
        *ok = json.m_good;
        return json.m_animations;
    }

private:
    explicit PresetJson(const QByteArray& text)
        : m_text(text)
        , m_at(0)
        , m_good(true)
    {
    }
    char peek()
    {
        while (m_at < m_text.size() && std::strchr(" \t\r\n", m_text.at(m_at)))
            ++m_at;
        return m_at < m_text.size() ? m_text.at(m_at) : '\0';
    }
    bool take(char c)
    {
        const bool there = peek() == c;
        m_at += there;
        return there;
    }
    void need(char c)
    {
        m_good = take(c) && m_good;
    }
    QByteArray string()
    {
        need('"');
        QByteArray out;
        while (m_at < m_text.size() && m_text.at(m_at) != '"') {
            m_at += m_text.at(m_at) == '\\'; // names of bones and controls need no escapes
            out += m_text.at(m_at++);
        }
        need('"');
        return out;
    }
    void object()
    {
        QByteArray url;
        need('{');
        while (m_good && peek() != '}') {
            const QByteArray key = string();
            need(':');
            if (key == "url" && peek() == '"')
                url = string();
            else if (key == "keys")
                keys(url);
            else
                value();
            if (!take(','))
                break;
        }
        need('}');
    }
    // [ [ time, value, ... ], ... ]
    void keys(const QByteArray& url)
    {
        bool first = true;
        need('[');
        while (m_good && peek() != ']') {
            need('[');
            number();
            need(',');
            const double v = number();
            need(']');
            if (first)
                m_animations.append(qMakePair(url, v));
            first = false;
            if (!take(','))
                break;
        }
        need(']');
    }
    double number()
    {
        peek();
        const int from = m_at;
        while (m_at < m_text.size() && std::strchr("+-.0123456789eE", m_text.at(m_at)))
            ++m_at;
        bool isNumber = false;
        const double v = m_text.mid(from, m_at - from).toDouble(&isNumber);
        m_good = m_good && isNumber;
        return v;
    }
    void array()
    {
        need('[');
        while (m_good && peek() != ']') {
            value();
            if (!take(','))
                break;
        }
        need(']');
    }
    void value()
    {
        if (peek() == '{')
            object();
        else if (peek() == '[')
            array();
        else if (peek() == '"')
            string();
        else
            number();
    }

    const QByteArray m_text;
    int m_at;
    bool m_good;
    QList<QPair<QByteArray, double>> m_animations;
};

} // namespace quillon
