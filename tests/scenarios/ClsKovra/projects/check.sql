SELECT cItem_class, cItemCode, cItemCName, cName FROM Ia_subsidiary ORDER BY AutoID
