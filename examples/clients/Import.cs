// Imports one request:  Import CLASS REQUEST.xml LOGIN.xml
// Compile with  csc /platform:x64 Import.cs  (or x86, as the Kovra.dll that is registered).
using System;
using System.IO;
using System.Xml.Linq;

static class Import
{
    // Kovra's classes live in a single-threaded apartment; without STAThread every call would cross apartments.
    [STAThread]
    static int Main(string[] arguments)
    {
        if (arguments.Length != 3)
        {
            Console.Error.WriteLine("Import CLASS REQUEST.xml LOGIN.xml");
            return 2;
        }
        // Inside the ERP take the login object that it gives you. Elsewhere the reference host's stands in for it.
        dynamic login = Activator.CreateInstance(Type.GetTypeFromProgID("KovraHost.Login", true));
        login.LoadXML(File.ReadAllText(arguments[2]));

        // One instance serves one request.
        dynamic importer = Activator.CreateInstance(Type.GetTypeFromProgID("Kovra." + arguments[0], true));
        string result = importer.Transact(File.ReadAllText(arguments[1]), login);

        // "EMPTY" answers with the empty text.
        if (result.Length == 0)
            return 0;
        XElement document = XElement.Parse(result);
        if (document.Name == "error")
        {
            Console.Error.WriteLine("{0}: {1}", (string)document.Attribute("code"), (string)document.Attribute("dsc"));
            return 1;
        }
        foreach (XElement item in document.Elements("item"))
            Console.WriteLine("{0}\t{1}\t{2}", (string)item.Attribute("code"), (string)item.Attribute("key"),
                              (string)item.Attribute("dsc"));
        return 0;
    }
}
