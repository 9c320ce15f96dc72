#pragma once

#include "controls/TdAutoWidthComboBox.h"

#include <QIcon>
#include <QList>

/// A combo box whose entries have an icon and an indent, for things that stand below one another: datasources and their
/// datasets, folders and what they hold. The indent shows in the list, not in the closed box.
///
/// Icons are named by their index in a list of images. Icon and indent belong to the entry: they go along when entries
/// are inserted before it or taken away.
class TDCOMMON_API CTdImageComboBox : public CTdAutoWidthComboBox
{
    Q_OBJECT

public:
    static constexpr int noImage = -1;
    static constexpr int greatestIndent = 64; ///< levels; deeper ones stand where this one stands

    explicit CTdImageComboBox(QWidget *parent = nullptr);
    ~CTdImageComboBox() override;

    /// The images that entries name by index; entries that are there already change their icons. They are copied.
    void SetImageList(const QList<QIcon> &images);

    /// Adds an entry. @param image index in the image list; noImage, or an index that does not exist, shows none
    /// @param indent levels from the left, 0 to greatestIndent @return the place of the entry
    int AddItem(const QString &text, int image = noImage, int indent = 0, const QVariant &value = QVariant());
    /// Inserts an entry at @p index, at the end where there is no such place. @return the place of the entry
    int InsertItem(int index, const QString &text, int image = noImage, int indent = 0,
                   const QVariant &value = QVariant());

    /// The entry's image; noImage for none, and for an entry that does not exist.
    int GetItemImage(int index) const;
    void SetItemImage(int index, int image);
    /// The entry's indent in levels; 0 for an entry that does not exist.
    int GetItemIndent(int index) const;
    void SetItemIndent(int index, int indent);

protected:
    int extraWidth(const QModelIndex &index) const override;

private:
    QList<QIcon> m_images;
};
