select count(*) as n from IA_HeadSet
