#pragma once

#include <QString>

// Character references in HTML text, read and written.
namespace HtmlText {

// Decodes named (&amp; &lt; &gt; &quot; &apos; &nbsp;, the Latin-1 names and common typographic
// ones such as &hellip; &rsquo; &euro;), decimal (&#233;) and hex (&#xE9;) character references,
// in one pass ("&amp;lt;" -> "&lt;"). &#128;-&#159; read as Windows-1252, as browsers do. Unknown
// or malformed references, a missing ';', and references to NUL, controls or surrogates stay as
// they are.
QString stringByReplacingHTMLEncoding(const QString& text);

// Escapes & < > " ' for safe use in HTML text and attribute values (' as &#39;).
QString encodeForHTML(const QString& text);

}  // namespace HtmlText
