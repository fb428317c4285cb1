#include "window/helpdialogs.h"

#include "window/commands.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMessageBox>
#include <QTableWidget>
#include <QVBoxLayout>

static QTableWidget *makeKeyTable()
{
    auto *table = new QTableWidget(0, 2);
    for (const CommandRow &row : commandRows()) {
        if (row.key.isEmpty())
            continue;
        const int last = table->rowCount();
        table->insertRow(last);
        const QKeySequence keys(row.key, QKeySequence::PortableText);
        table->setItem(last, 0, new QTableWidgetItem(keys.toString(QKeySequence::NativeText)));
        table->setItem(last, 1, new QTableWidgetItem(row.what));
    }
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->setShowGrid(false);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    return table;
}

void showKeys(QWidget *window)
{
    auto *dialog = new QDialog(window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QStringLiteral("keys"));
    dialog->setWindowTitle(Commands::tr("Keys"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto *column = new QVBoxLayout(dialog);
    column->addWidget(makeKeyTable());
    column->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    dialog->resize(560, 620);
    dialog->show();
}

void showAbout(QWidget *window)
{
    auto *box = new QMessageBox(window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(Commands::tr("About the bench"));
    box->setText(Commands::tr("<b>Head unit bench %1</b>").arg(QStringLiteral(NORDA_VERSION)));
    box->setInformativeText(
        Commands::tr(
            "A head unit on a desk: it loads a plugin as a car's head unit does, drives it with a "
            "simulated or recorded car, and shows what crosses the interface between them.\n\nQt "
            "%1")
            .arg(QLatin1String(qVersion())));
    box->open();
}
