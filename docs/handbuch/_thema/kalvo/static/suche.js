// Names the sections that the search has found, drops what it tells twice, and counts in German.
"use strict";

document.addEventListener("DOMContentLoaded", () => {
  const results = document.getElementById("search-results");

  const sectionTitle = (page, anchor) => {
    for (const [title, places] of Object.entries(Search._index.alltitles))
      for (const [file, id] of places)
        if (id === anchor && Search._index.docnames[file] === page) return title;
    return "";
  };

  const tidy = () => {
    const known = new Set();
    results.querySelectorAll("ul.search li").forEach((item) => {
      const link = item.querySelector("a");
      const page = link.pathname.split("/").pop().replace(/\.html$/, "");
      const section = sectionTitle(page, link.hash.slice(1));
      const pageTitle = Search._index.titles[Search._index.docnames.indexOf(page)] || "";
      const text = section && section !== pageTitle ? `${pageTitle} › ${section}` : pageTitle;
      if (!text || known.has(text)) return item.remove();
      known.add(text);
      link.textContent = text;
    });
    const summary = results.querySelector(".search-summary");
    if (summary && summary.innerText && known.size)
      summary.innerText = known.size === 1 ? "1 Stelle gefunden." : `${known.size} Stellen gefunden.`;
  };

  const observer = new MutationObserver(() => {
    observer.disconnect();
    tidy();
    observer.observe(results, { childList: true, subtree: true, characterData: true });
  });
  observer.observe(results, { childList: true, subtree: true, characterData: true });
});
