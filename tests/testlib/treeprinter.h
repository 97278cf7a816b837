// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <functional>

namespace Vorsk {
namespace UIAbstraction {
class StandardType;
class UIElement;
} // namespace UIAbstraction
} // namespace Vorsk

QT_BEGIN_NAMESPACE
class QImage;
class QRect;
QT_END_NAMESPACE

namespace TestLib {

/**
 * Prints elements as text that a test can hold as its expectation. Of an element it shows, leaving
 * out what is not set:
 *
 *   Button/QPushButton "&OK" window transparent subgraphTransparent (10,20 80x24) image 80x24
 *   {clicked=0, shown=1}
 *
 * on one line. Ids are shown only where a name for them is asked for.
 */
class TreePrinter {
public:
    /** Hidden leaves out the numbers of rectangles and pictures, where they hang on fonts. */
    enum class Sizes { Shown, Hidden };
    using NameOfId = std::function<QString(const QString& id)>;

    explicit TreePrinter(Sizes sizes = Sizes::Shown);

    /** One line for each element, each ended by a newline, children indented by two spaces. */
    QString print(const Vorsk::UIAbstraction::UIElement& root) const;

    /** All on one line, each element behind its name, children in brackets behind their parent. */
    QString printCompact(const Vorsk::UIAbstraction::UIElement& root, const NameOfId& name) const;

    /** "(left,top widthxheight)" */
    QString rect(const QRect& rect) const;
    /** "image widthxheight" or "no image" */
    QString image(const QImage& image) const;
    /** The text in quotes with what cannot be printed escaped; null without quotes when null. */
    static QString quoted(const QString& text);
    /** The name as it is, or quoted() where it would not read as one word. */
    static QString bare(const QString& name);
    /** The bare name; "unknown" when it is null. */
    static QString type(const Vorsk::UIAbstraction::StandardType& type);

private:
    QString describe(const Vorsk::UIAbstraction::UIElement& element) const;

    Sizes m_sizes;
};

} // namespace TestLib
