// KovraResult of the C# client, over the folders of results:  OutcomesTest RESULTS
using System;
using System.IO;
using System.Linq;

static class OutcomesTest
{
    static string Told(string request, string result)
    {
        try
        {
            return string.Concat(KovraResult.Outcomes(request, result).Select(
                o => string.Format("{0}\t{1}\t{2}\t{3}\n", o.Row, o.Code, o.Key, o.Message)));
        }
        catch (RefusedRequest refused)
        {
            return refused.Code + ": " + refused.Message + "\n";
        }
    }

    static int Main(string[] arguments)
    {
        int failed = 0;
        string[] folders = Directory.GetDirectories(arguments[0]);
        foreach (string folder in folders)
        {
            Func<string, string> text = name => File.ReadAllText(Path.Combine(folder, name));
            string told = Told(text("request.xml"), text("result.xml"));
            if (told != text("outcomes.txt"))
            {
                Console.Error.WriteLine("{0}: the C# client tells\n{1}", folder, told);
                ++failed;
            }
        }
        Console.WriteLine("C# client: {0} passed, {1} failed", folders.Length - failed, failed);
        return failed == 0 && folders.Length > 0 ? 0 : 1;
    }
}
