<?xml version="1.0" encoding="UTF-8"?>
<!-- What every stage begins with: a document of another version than the stage's own ends the update. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-8"/>

  <xsl:template name="refuseOtherVersions">
    <xsl:param name="expected"/>
    <xsl:if test="local-name(/*) = 'QEL' and namespace-uri(/*) != $expected">
      <xsl:message terminate="yes">
        <xsl:text>Error: Input .qeli file is incorrect version. Expected namespace "</xsl:text>
        <xsl:value-of select="$expected"/>
        <xsl:text>". Found namespace "</xsl:text>
        <xsl:value-of select="namespace-uri(/*)"/>
        <xsl:text>".</xsl:text>
      </xsl:message>
    </xsl:if>
  </xsl:template>
</xsl:stylesheet>
