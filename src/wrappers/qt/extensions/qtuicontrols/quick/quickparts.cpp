// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickparts.h"

#include "qtuicontrols/quick/quickclass.h"

#include <QAbstractItemModel>
#include <QJSValue>
#include <QStringList>
#include <QVariant>

namespace Vorsk {
namespace UIControls {

namespace {

/** Of a ListModel in QML. Other models are the program's data. */
QStringList textsOfModel(const QAbstractItemModel& model, const QString& role) {
    const QHash<int, QByteArray> roles = model.roleNames();
    const int number = role.isEmpty() && roles.size() == 1 ? roles.constBegin().key()
                                                           : roles.key(role.toUtf8(), -1);
    QStringList texts;
    const int count = number == -1 ? 0 : model.rowCount();
    for (int i = 0; i < count && i <= QuickParts::mostOptions; ++i) {
        texts.append(model.data(model.index(i, 0), number).toString());
    }
    return texts;
}

QStringList textsOfList(const QVariantList& list, const QString& role) {
    QStringList texts;
    for (const QVariant& entry : list) {
        texts.append(role.isEmpty() ? entry.toString() : entry.toMap().value(role).toString());
    }
    return texts;
}

/** Runs no code of the application. */
QStringList textsOf(const QObject* comboBox) {
    QVariant model = comboBox->property("model");
    const QString role = comboBox->property("textRole").toString();
    if (model.userType() == qMetaTypeId<QJSValue>()) {
        model = model.value<QJSValue>().toVariant();
    }
    if (const auto* const object = model.value<QObject*>()) {
        const auto* const items = qobject_cast<const QAbstractItemModel*>(object);
        return items != nullptr && object->inherits("QQmlListModel") ? textsOfModel(*items, role)
                                                                     : QStringList();
    }
    return model.canConvert<QVariantList>() ? textsOfList(model.toList(), role) : QStringList();
}

} // namespace

void QuickParts::addOptions(QObject* comboBox, UIElement* element) {
    const QStringList texts = textsOf(comboBox);
    if (texts.isEmpty() || texts.size() > mostOptions) {
        return;
    }
    Options& options = m_options[comboBox];
    options.comboBox = comboBox;
    options.elements.clear();
    for (const QString& text : texts) {
        Description what;
        what.type = ElementType::Option;
        what.className = classNameOf(comboBox);
        what.text = text;
        what.uses = {Use::Chosen};
        options.elements.append(m_book.add(nullptr, what, element));
    }
}

UIElement* QuickParts::optionElement(const QObject* comboBox, int index) const {
    const auto found = m_options.constFind(comboBox);
    return found == m_options.cend() || found->comboBox.isNull() ? nullptr
                                                                 : found->elements.value(index);
}

} // namespace UIControls
} // namespace Vorsk
