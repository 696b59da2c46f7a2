INSERT INTO fitem (citem_class, citem_name, ctable) VALUES ('97', N'研发项目', 'fitemss97')
GO
INSERT INTO fitem (citem_class, citem_name, ctable) VALUES ('00', N'存货项目', 'Inventory')
GO
INSERT INTO fitemss97 (citemcode, citemname) VALUES ('RD01', N'主轴研制')
